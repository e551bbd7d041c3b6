#include "platform/Platform.h"

#include <QCoreApplication>

namespace moorline {

void soon(std::function<void()> begin)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(begin), Qt::QueuedConnection);
}

} // namespace moorline

#include "platform/linux/bus/BusAnswer.h"

namespace moorline {

BusAnswer::BusAnswer(const QDBusMessage &message)
    : m_message(message)
{
}

BusAnswer BusAnswer::failure(const QString &errorName)
{
    return BusAnswer(QDBusMessage::createError(errorName, {}));
}

QString BusAnswer::errorName() const
{
    return isError() ? m_message.errorName() : QString();
}

} // namespace moorline

#include "platform/linux/desktop/PlainFiles.h"

#include <QFileInfo>

namespace moorline {

QString PlainFiles::displayName(const QString &path) const
{
    const QString name = QFileInfo(path).fileName();
    return name.isEmpty() ? path : name;
}

} // namespace moorline

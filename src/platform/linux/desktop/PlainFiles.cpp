#include "platform/linux/desktop/PlainFiles.h"

#include <QFileInfo>

namespace moorline {

QString PlainFiles::displayName(const QString &path) const
{
    const QString last = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    return last.isEmpty() ? path.left(1) : last;
}

bool PlainFiles::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

} // namespace moorline

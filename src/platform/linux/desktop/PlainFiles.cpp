#include "platform/linux/desktop/PlainFiles.h"

namespace moorline {

QString PlainFiles::displayName(const QString &path) const
{
    const QString last = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    return last.isEmpty() ? path.left(1) : last;
}

} // namespace moorline

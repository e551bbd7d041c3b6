#include "support/KdeSettings.h"

#include <QList>

namespace moorline {

namespace {

/// Without a mark such as "[$i]", by which an administrator keeps it as it is.
QByteArray unmarked(const QByteArray &name)
{
    const qsizetype mark = name.indexOf("[$");
    return mark < 0 ? name : name.first(mark);
}

} // namespace

QByteArray kdeSetting(const QByteArray &file, const QByteArray &group, const QByteArray &key)
{
    bool isThere = false;
    const QList<QByteArray> lines = file.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray entry = line.trimmed();
        const qsizetype end = entry.indexOf('=');
        if (entry.startsWith('['))
            isThere = unmarked(entry) == '[' + group + ']';
        else if (isThere && end >= 0 && unmarked(entry.first(end)) == key)
            return entry.sliced(end + 1).trimmed();
    }
    return {};
}

} // namespace moorline

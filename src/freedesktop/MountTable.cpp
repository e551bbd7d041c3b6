#include "freedesktop/MountTable.h"

namespace moorline {

namespace {

/// Of those that proc_pid_mountinfo(5) lists.
constexpr qsizetype idField = 0;
constexpr qsizetype pointField = 4;

/// Blanks and backslashes stand there as three octal digits behind a backslash.
QByteArray unescaped(const QByteArray &text)
{
    QByteArray answer;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool isNumber = false;
        const uint byte = text[i] == '\\' ? text.mid(i + 1, 3).toUInt(&isNumber, 8) : 0;
        answer.append(isNumber ? char(byte) : text[i]);
        i += isNumber ? 3 : 0;
    }
    return answer;
}

bool holds(const QByteArray &point, const QByteArray &path)
{
    return point == "/" || (path.startsWith(point) && (path.size() == point.size() || path[point.size()] == '/'));
}

} // namespace

MountTable MountTable::parse(const QByteArray &table)
{
    MountTable answer;
    for (const QByteArray &line : table.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        bool isNumber = false;
        const quint64 id = fields.value(idField).toULongLong(&isNumber);
        const QByteArray point = unescaped(fields.value(pointField));
        if (isNumber && point.startsWith('/'))
            answer.m_mounts.append({id, point});
    }
    return answer;
}

Mount MountTable::at(const QByteArray &path) const
{
    Mount found{.id = 0, .point = "/"};
    for (const Mount &mount : m_mounts) {
        // One that was mounted over another hides it.
        if (mount.point.size() >= found.point.size() && holds(mount.point, path))
            found = mount;
    }
    return found;
}

} // namespace moorline

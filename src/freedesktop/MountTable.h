#pragma once

#include <QByteArray>
#include <QList>

namespace moorline {

/// A file system in the tree of folders.
struct Mount {
    /// Never the same for two that are there at once, nor soon again.
    quint64 id = 0;
    /// Where it is.
    QByteArray point;

    bool operator==(const Mount &) const = default;
};

/// What is mounted where, the latest last.
class MountTable final {
public:
    /// The kernel's own table, as in /proc/self/mountinfo. Lines that are none are left out.
    [[nodiscard]] static MountTable parse(const QByteArray &table);

    /// The one that holds what is at this absolute path, by its words alone: no link is followed. The root, with the
    /// number 0, where none does.
    [[nodiscard]] Mount at(const QByteArray &path) const;
    [[nodiscard]] const QList<Mount> &mounts() const { return m_mounts; }

private:
    QList<Mount> m_mounts;
};

} // namespace moorline

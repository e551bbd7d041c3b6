#pragma once

#include "support/FileDescriptor.h"

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QString>
#include <functional>

namespace moorline {

/// What happens to desktop entries and to lists of applications on disk, also to those written in place. Any thread
/// may add what is watched, which may wait for a disk; one reads.
class FolderEvents final {
public:
    FolderEvents();

    /// Whatever happens to entries in this folder and to folders below it, from now on. It need not be there yet.
    void watchEntries(const QString &folder);
    /// Whatever happens to this file. Neither it nor its folder need be there yet.
    void watchFile(const QString &path);

    /// Readable when something happened. Negative where nothing can be watched.
    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }
    /// Whether anything happened that matters, since the last time that this was asked.
    [[nodiscard]] bool takeNews();

private:
    struct Place {
        bool hasEntries = false;
        /// What is watched in it besides entries.
        QSet<QString> names;
    };

    [[nodiscard]] bool watch(const QString &folder, const std::function<void(Place &)> &note);
    [[nodiscard]] bool isNews(int place, quint32 what, const QString &name) const;

    FileDescriptor m_descriptor;
    mutable QMutex m_mutex;
    QHash<int, Place> m_places;
};

} // namespace moorline

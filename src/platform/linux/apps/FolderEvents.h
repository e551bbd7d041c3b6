#pragma once

#include "support/FileDescriptor.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace moorline {

/// What happens to desktop entries and to lists of applications on disk, also to those written in place. It may be made
/// on one thread and read on another.
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

    Place *watch(const QString &folder);
    [[nodiscard]] bool isNews(int place, quint32 what, const QString &name) const;

    FileDescriptor m_descriptor;
    QHash<int, Place> m_places;
};

} // namespace moorline

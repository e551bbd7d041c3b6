#pragma once

#include "freedesktop/EntryCatalogue.h"
#include "freedesktop/EntryPlaces.h"
#include "freedesktop/WindowMatcher.h"
#include "platform/linux/apps/FolderEvents.h"

#include <atomic>
#include <memory>

namespace moorline {

/// What is said of applications by files that are in none of the folders for them, by path. Absent where there is no
/// entry.
using OutsideEntries = QHash<QString, std::optional<EntryRecord>>;

/// All that was found on disk.
struct LoadedEntries {
    std::shared_ptr<const EntryCatalogue> catalogue;
    /// Of the same entries.
    std::shared_ptr<const WindowMatcher> matcher;
    OutsideEntries outside;
    /// What has happened since, and will.
    std::shared_ptr<FolderEvents> events;
};

/// Reads every entry, those at `outside`, and what says which one opens what. Holds up its thread as long as the disk
/// takes; comes to an end early, with less, once `cancelled`.
[[nodiscard]] LoadedEntries loadEntries(
    const EntryPlaces &places, const QStringList &outside, const std::atomic_bool &cancelled);

/// The entry of an application that counts, wherever it is. Absent where it is hidden.
[[nodiscard]] std::optional<EntryRecord> readOutside(const QString &path, const EntryPlaces &places);

} // namespace moorline

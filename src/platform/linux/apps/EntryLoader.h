#pragma once

#include "freedesktop/EntryCatalogue.h"
#include "freedesktop/EntryPlaces.h"
#include "freedesktop/WindowMatcher.h"
#include "platform/linux/apps/FolderEvents.h"

#include <atomic>
#include <memory>

namespace moorline {

/// All that was found on disk.
struct LoadedEntries {
    std::shared_ptr<const EntryCatalogue> catalogue;
    /// Of the same entries.
    std::shared_ptr<const WindowMatcher> matcher;
    /// What has happened since, and will.
    std::shared_ptr<FolderEvents> events;
};

/// Reads every entry, and what says which one opens what. Holds up its thread as long as the disk takes; comes to an
/// end early, with less, once `cancelled`.
[[nodiscard]] LoadedEntries loadEntries(const EntryPlaces &places, const std::atomic_bool &cancelled);

/// Where the application is that opens files of one of these types, the first that any opens. Absent where none does.
/// `known` are the entries that count, whose files are read for what they say of the types. May be asked on any thread.
[[nodiscard]] std::optional<QString> handlerPath(
    const QStringList &types, QList<EntryRecord> known, const EntryPlaces &places);

} // namespace moorline

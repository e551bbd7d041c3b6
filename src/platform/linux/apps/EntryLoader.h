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

} // namespace moorline

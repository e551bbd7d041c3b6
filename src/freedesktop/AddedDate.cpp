#include "freedesktop/AddedDate.h"

#include <algorithm>

namespace moorline {

namespace {

/// Programs give a file its name and its rights when they have written it.
constexpr std::chrono::seconds finishingTouch{2};

} // namespace

std::optional<FileTimes::Time> addedDate(const FileTimes &times)
{
    if (!times.birth)
        return std::nullopt;
    const bool wasMoved = times.changed > std::max(*times.birth, times.modified) + finishingTouch;
    return wasMoved ? times.changed : *times.birth;
}

} // namespace moorline

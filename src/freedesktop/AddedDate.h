#pragma once

#include <chrono>
#include <optional>

namespace moorline {

/// What a file system says of a file.
struct FileTimes {
    using Time = std::chrono::sys_time<std::chrono::milliseconds>;

    /// Absent where the file system keeps none.
    std::optional<Time> birth = std::nullopt;
    /// When the content last changed, which whoever copies a file may set to anything.
    Time modified = {};
    /// When anything about the file last changed, its place included.
    Time changed = {};
};

/// When the file came into its folder. Linux has no such date. A file that was made there came with its birth. One that
/// was moved there is older, and was only changed then: not by a writer, who would have touched the content as well.
/// Absent where nobody can tell.
[[nodiscard]] std::optional<FileTimes::Time> addedDate(const FileTimes &times);

} // namespace moorline

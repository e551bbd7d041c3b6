#pragma once

#include "support/IconThemes.h"

#include <optional>

namespace moorline {

/// What the index of an icon theme says.
struct IconThemeIndex {
    QStringList inherits;
    QList<IconFolder> folders;
};

/// Absent unless there is an index of a theme at that path.
[[nodiscard]] std::optional<IconThemeIndex> readIconThemeIndex(const QString &path);

} // namespace moorline

#pragma once

#include <QString>

namespace moorline {

/// What the file manager says of files.
class Files {
public:
    virtual ~Files() = default;

    /// The name that the user sees, which may be another than the last part of the path: translated, or without its
    /// extension. For a file that is not there the last part of its path. Never empty unless `path` is.
    [[nodiscard]] virtual QString displayName(const QString &path) const = 0;
    /// Whether there is a file or folder at `path` now.
    [[nodiscard]] virtual bool exists(const QString &path) const = 0;
};

} // namespace moorline

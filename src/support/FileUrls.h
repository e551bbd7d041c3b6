#pragma once

#include <QUrl>
#include <optional>

// Names of files are bytes, and need not be text. A QUrl keeps such bytes as long as nobody asks it for a local file.

namespace moorline {

/// The address of the file at this absolute path.
[[nodiscard]] QUrl fileUrl(const QByteArray &path);
/// The path in the address of a file, as it is on disk.
[[nodiscard]] QByteArray pathBytes(const QUrl &file);
/// The same as text; absent where it is none.
[[nodiscard]] std::optional<QString> pathText(const QUrl &file);

} // namespace moorline

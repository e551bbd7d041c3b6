#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace moorline {

/// The content of a regular file of at most `largest` bytes, or nothing. A FIFO or a device at that path is neither
/// waited for nor read.
[[nodiscard]] std::optional<QByteArray> regularFileContent(const QString &path, qint64 largest);

} // namespace moorline

#pragma once

#include "platform/Files.h"

namespace moorline {

/// Everything in a folder, in the order of the file system. Absent when it cannot be read. It may wait for a disk.
[[nodiscard]] std::optional<QList<FolderEntry>> readFolder(const QByteArray &path);
/// Whether anything is in it. It reads no further than the first name.
[[nodiscard]] bool isFolderFilled(const QByteArray &path);

} // namespace moorline

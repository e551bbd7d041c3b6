#pragma once

#include "freedesktop/EntryRecord.h"

namespace moorline {

/// The types of files and addresses that anyone asks the opener of.
[[nodiscard]] const QStringList &askedMimeTypes();

/// What the file at `path` says of an application. Absent where it is none, or none that can be read. May be asked on
/// any thread, which it may hold up as long as a disk does.
[[nodiscard]] std::optional<EntryRecord> readEntry(const QString &path, const QString &id);

} // namespace moorline

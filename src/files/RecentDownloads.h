#pragma once

#include "platform/Files.h"

#include <QUrl>

namespace moorline {

/// How many files the Downloads stack lists.
inline constexpr qsizetype mostRecentDownloads = 12;

/// Those of a folder that came last, newest first: by when they came into it, else by when they were last changed.
/// Those of one time stay in their order; those without any come last. What is hidden is left out.
[[nodiscard]] QList<FolderEntry> newest(QList<FolderEntry> entries);
/// Where they are.
[[nodiscard]] QList<QUrl> urlsIn(const QString &folder, const QList<FolderEntry> &entries);

} // namespace moorline

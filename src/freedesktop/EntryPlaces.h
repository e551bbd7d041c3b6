#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace moorline {

/// Where desktop entries are, and what says which of them opens what. All of it in order: what counts most comes first.
struct EntryPlaces {
    QStringList folders = {};
    /// mimeapps.list and the like.
    QStringList mimeLists = {};
    /// What XDG_CURRENT_DESKTOP says.
    QStringList desktopNames = {};

    bool operator==(const EntryPlaces &) const = default;
};

/// By the rules of the base directories and of the lists of applications. `variable` answers one of the environment,
/// empty where it is not set. What Flatpak and Snap export is looked for also where the session was not told of it.
[[nodiscard]] EntryPlaces entryPlaces(const std::function<QString(const char *name)> &variable, const QString &home);

/// The desktop file id, without ".desktop", of what is at `path`: its way down from the first of the folders that it is
/// in, and its name where it is in none.
[[nodiscard]] QString entryId(const QString &path, const QStringList &folders);

} // namespace moorline

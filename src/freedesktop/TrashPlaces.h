#pragma once

#include <QByteArray>
#include <QList>

namespace moorline {

/// A folder that may hold what a user threw away on a volume, with "files" in it.
struct TrashPlace {
    QByteArray folder;
    /// What all users share: to be trusted only where it is a folder, no link, and sticky.
    QByteArray shared = {};

    bool operator==(const TrashPlace &) const = default;
};

/// Where to look, the user's own first, by the Trash specification: in the home and at the top of each volume.
/// `homeTrash` is "Trash" in the user's folder of data.
[[nodiscard]] QList<TrashPlace> trashPlaces(
    const QByteArray &homeTrash, const QList<QByteArray> &mountPoints, quint32 user);

} // namespace moorline

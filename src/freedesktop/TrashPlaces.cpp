#include "freedesktop/TrashPlaces.h"

namespace moorline {

QList<TrashPlace> trashPlaces(const QByteArray &homeTrash, const QList<QByteArray> &mountPoints, quint32 user)
{
    QList<TrashPlace> places{{.folder = homeTrash}};
    const QByteArray number = QByteArray::number(user);
    for (const QByteArray &mountPoint : mountPoints) {
        const QByteArray top = mountPoint.endsWith('/') ? mountPoint.chopped(1) : mountPoint;
        places.append({.folder = top + "/.Trash/" + number, .shared = top + "/.Trash"});
        places.append({.folder = top + "/.Trash-" + number});
    }
    return places;
}

} // namespace moorline

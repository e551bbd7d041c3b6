#pragma once

#include "freedesktop/WindowFacts.h"

#include <QHash>
#include <QList>

namespace moorline {

/// An application, as its windows show that it runs.
struct OpenApplication {
    /// Names it among those of one moment and the next.
    QString key = {};
    /// The id of its desktop entry. Absent where its windows belong to none.
    std::optional<QString> entry = std::nullopt;
    /// All of its windows, in the order in which they were given.
    QList<XWindowId> windows = {};
    /// Those of them that a taskbar would show.
    QList<XWindowId> taskbarWindows = {};
    /// Absent where there is none, or more than one.
    std::optional<qint64> process = std::nullopt;

    bool operator==(const OpenApplication &) const = default;
};

/// One application for each entry that has windows, in the order of their first ones. Windows without an entry are one
/// application for each process, or for each class where that is not known. `entries` has the ids of entries by window.
[[nodiscard]] QList<OpenApplication> openApplications(
    const QList<WindowFacts> &windows, const QHash<XWindowId, QString> &entries);

} // namespace moorline

#pragma once

#include <QString>
#include <QVariantMap>

namespace moorline {

/// What an application says of itself to whoever shows its icon. All of it is kept; a bar that draws only the count may
/// draw the rest one day.
struct LauncherEntryState {
    qint64 count = 0;
    bool isCountVisible = false;
    /// From 0 to 1.
    double progress = 0;
    bool isProgressVisible = false;
    bool isUrgent = false;
    bool isUpdating = false;
    /// The object that offers a menu; empty for none.
    QString quicklist = {};

    /// Takes what has changed. A value of another type, no number, or a text that is too long changes nothing.
    void merge(const QVariantMap &changes);
    /// The text for the icon; absent where there is none to show.
    [[nodiscard]] std::optional<QString> badge() const;

    bool operator==(const LauncherEntryState &) const = default;
};

} // namespace moorline

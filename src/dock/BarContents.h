#pragma once

#include "settings/Settings.h"

#include <QDateTime>
#include <optional>

namespace moorline {

/// What the bar knows beyond the settings when it chooses its widgets.
struct BarState {
    bool musicVisible = false;
    /// How many applications the recent-apps service lists now.
    qsizetype recentApps = 0;

    bool operator==(const BarState &) const = default;
};

/// What the music is doing, as far as it concerns the bar.
struct Playback {
    bool isPlaying = false;
    /// When something was last heard playing; absent when nothing ever was.
    std::optional<QDateTime> lastPlaybackAt;
};

/// How many icons stand in the bar, and in how many widgets.
struct IconCounts {
    qint64 count = 0;
    qint64 groups = 0;

    bool operator==(const IconCounts &) const = default;
};

/// Whether the music widget has its place at `now`: always, or only around the time in which something plays.
[[nodiscard]] bool isMusicVisible(const Settings &settings, const Playback &playback, const QDateTime &now);

/// The enabled widgets that have something to show, in the order of the settings.
[[nodiscard]] QList<WidgetKind> visibleWidgets(const Settings &settings, const BarState &state);

/// The icons in those widgets of `row` that consist of icons.
[[nodiscard]] IconCounts iconCounts(const QList<WidgetKind> &row, const Settings &settings, const BarState &state);

/// The icon size, in whole points, with which a pill measured as `measuredWidth` at `currentSize` fits into
/// `maximumWidth`. Stays at `currentSize` when the change would be less than a point, so that size and width do not
/// chase each other.
[[nodiscard]] qreal fittedIconSize(const IconCounts &icons, qreal measuredWidth, qreal currentSize, qreal maximumWidth);

} // namespace moorline

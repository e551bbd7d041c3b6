#pragma once

#include <QtGlobal>

/// The measures of the bar and its panel, in points.
namespace moorline::BarMetrics {

inline constexpr qreal pillHeight = 72;
inline constexpr qreal pillCornerRadius = 19;
inline constexpr qreal pillLeadingPadding = 16;
inline constexpr qreal pillTrailingPadding = 20;
inline constexpr qreal dividerPadding = 14;
/// Instead of a divider between the two weather widgets, which read as one.
inline constexpr qreal weatherGap = 14;

inline constexpr qreal nudgeHeight = 26;
inline constexpr qreal nudgeGap = 8;

/// The transparent margin above and below the body.
inline constexpr qreal panelMargin = 13;
inline constexpr qreal panelHeight = panelMargin + pillHeight + panelMargin;
inline constexpr qreal panelHeightWithNudge = panelHeight + nudgeHeight + nudgeGap;
inline constexpr qreal initialPanelWidth = 460;
inline constexpr qreal minimumPanelWidth = 160;
/// What the widest panel leaves free of the screen, both sides together.
inline constexpr qreal screenSideMargins = 16;

inline constexpr qreal largestIcon = 46;
inline constexpr qreal smallestIcon = 24;
inline constexpr qreal iconGap = 6;
/// The room for a bar where no primary screen can be found.
inline constexpr qreal assumedMaximumWidth = 1496;

} // namespace moorline::BarMetrics

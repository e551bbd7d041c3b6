#pragma once

#include <QColor>

/// The palette of the bar.
namespace moorline::Theme {

inline const QColor pillFill = QColor::fromRgbF(0x14 / 255.0F, 0x14 / 255.0F, 0x16 / 255.0F, 0.9F);
inline const QColor pillStroke = QColor::fromRgbF(1, 1, 1, 0.1F);
inline const QColor primaryText = QColor::fromRgbF(1, 1, 1);
inline const QColor secondaryText = QColor::fromRgbF(1, 1, 1, 0.5F);
inline const QColor tertiaryText = QColor::fromRgbF(1, 1, 1, 0.4F);
inline const QColor divider = QColor::fromRgbF(1, 1, 1, 0.1F);

/// The weekday on the calendar page, and the part of the year that has passed.
inline const QColor calendarWeekday = QColor::fromRgbF(1, 0x6b / 255.0F, 0x5e / 255.0F);
inline const QColor yearProgress = QColor::fromRgbF(1, 0x8a / 255.0F, 0x4c / 255.0F);

} // namespace moorline::Theme

#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QSizeF>
#include <QString>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace moorline {

/// The look of one line of text in the system font.
struct TextStyle {
    /// In points.
    qreal size = 11;
    QFont::Weight weight = QFont::Normal;
    /// Extra space after each letter, in points.
    qreal tracking = 0;
    /// Every digit takes the width of the widest, so that a number does not jitter while it counts.
    bool monospacedDigits = false;

    bool operator==(const TextStyle &) const = default;
};

[[nodiscard]] QFont font(const TextStyle &style);
/// What one line takes, in points: the advance of the text by the height of the font.
[[nodiscard]] QSizeF textSize(const QString &text, const TextStyle &style);
/// Draws one line whose box, as textSize() gives it, has its top left corner at `topLeft`.
void drawText(
    QPainter &painter, const QPointF &topLeft, const QString &text, const TextStyle &style, const QColor &color);
/// The text, shortened at its end with an ellipsis to fit `width`. Empty when not even the ellipsis fits.
[[nodiscard]] QString elided(const QString &text, const TextStyle &style, qreal width);

} // namespace moorline

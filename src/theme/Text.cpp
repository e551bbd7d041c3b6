#include "theme/Text.h"

#include "theme/DevicePixels.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QList>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <algorithm>

namespace moorline {

namespace {

/// A piece of a line that is shaped and placed on its own.
struct Segment {
    QString text;
    /// From the start of the line to the start of the piece's ink, in points.
    qreal x;
};

/// One line, laid out from left to right. Measuring and drawing both go through it, so that they cannot disagree.
struct Line {
    QList<Segment> segments;
    qreal width = 0;
};

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

qreal widestDigit(const QFontMetricsF &metrics)
{
    qreal widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

void addDigit(Line &line, QChar digit, const QFontMetricsF &metrics, qreal cell)
{
    line.segments.append({digit, line.width + (cell - metrics.horizontalAdvance(digit)) / 2});
    line.width += cell;
}

void addStretch(Line &line, const QString &stretch, const QFontMetricsF &metrics)
{
    line.segments.append({stretch, line.width});
    line.width += metrics.horizontalAdvance(stretch);
}

Line withDigitCells(const QString &text, const QFontMetricsF &metrics)
{
    Line line;
    const qreal cell = widestDigit(metrics);
    for (auto next = text.begin(); next != text.end();) {
        if (isDigit(*next)) {
            addDigit(line, *next++, metrics, cell);
            continue;
        }
        const auto end = std::find_if(next, text.end(), isDigit);
        addStretch(line, QString(next, end - next), metrics);
        next = end;
    }
    return line;
}

Line layOut(const QString &text, const TextStyle &style, const QFontMetricsF &metrics)
{
    if (style.monospacedDigits)
        return withDigitCells(text, metrics);
    Line line;
    addStretch(line, text, metrics);
    return line;
}

QList<qsizetype> graphemeEnds(const QString &text)
{
    QList<qsizetype> ends{0};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (finder.toNextBoundary() > 0)
        ends.append(finder.position());
    return ends;
}

QString cutAfter(const QString &text, qsizetype length)
{
    QString start = text.left(length);
    while (!start.isEmpty() && start.back().isSpace())
        start.chop(1);
    return start + u'\u2026';
}

} // namespace

QFont font(const TextStyle &style)
{
    QFont font = QGuiApplication::font();
    // A style name, where the desktop gives one, would win over the weight.
    font.setStyleName({});
    font.setPixelSize(std::max(1, qRound(style.size)));
    font.setWeight(style.weight);
    font.setLetterSpacing(QFont::AbsoluteSpacing, style.tracking);
    // Hinting sideways would round every advance, and measures at scale 1 would be wrong at any other.
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

QSizeF textSize(const QString &text, const TextStyle &style)
{
    const QFontMetricsF metrics(font(style));
    return {layOut(text, style, metrics).width, metrics.height()};
}

void drawText(
    QPainter &painter, const QPointF &topLeft, const QString &text, const TextStyle &style, const QColor &color)
{
    const QFont styled = font(style);
    const QFontMetricsF metrics(styled);
    const Line line = layOut(text, style, metrics);
    painter.save();
    painter.setFont(styled);
    painter.setPen(color);
    for (const Segment &segment : line.segments)
        painter.drawText(snappedToPixels(painter, topLeft + QPointF(segment.x, metrics.ascent())), segment.text);
    painter.restore();
}

QString elided(const QString &text, const TextStyle &style, qreal width)
{
    const auto fits = [&](const QString &candidate) { return textSize(candidate, style).width() <= width; };
    if (fits(text))
        return text;
    const QList<qsizetype> ends = graphemeEnds(text);
    const auto firstTooLong =
        std::partition_point(ends.begin(), ends.end(), [&](qsizetype end) { return fits(cutAfter(text, end)); });
    return firstTooLong == ends.begin() ? QString() : cutAfter(text, *std::prev(firstTooLong));
}

} // namespace moorline

#include "apps/BadgeView.h"

#include "theme/DevicePixels.h"
#include "theme/Text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

constexpr qreal fontShare = 0.3;
constexpr qreal smallestFont = 8;
constexpr qreal largestFont = 13;

// Shares of the size of the font.
constexpr qreal heightShare = 1.4;
constexpr qreal paddingShare = 0.3;
constexpr qreal outlineShare = 0.09;

/// How far the capsule reaches beyond the corner, as a share of the icon's side: less than the gap between two icons.
constexpr qreal overhangShare = 0.1;

const QColor fill = QColor::fromRgbF(1, 0.23F, 0.19F);
const QColor outline = QColor::fromRgbF(1, 1, 1, 0.85F);
const QColor shadowColor = QColor::fromRgbF(0, 0, 0, 0.35F);
constexpr qreal shadowBlurRadius = 3;
constexpr QPointF shadowOffset{0, 1};

constexpr qsizetype longestText = 4;

/// However many digits it has.
bool isWholeNumberAbove999(const QString &text)
{
    QStringView digits = QStringView(text).trimmed();
    if (digits.startsWith(u'+'))
        digits = digits.mid(1);
    if (!std::all_of(digits.begin(), digits.end(), [](QChar one) { return one >= u'0' && one <= u'9'; }))
        return false;
    while (digits.startsWith(u'0'))
        digits = digits.mid(1);
    return digits.size() > 3;
}

/// What a reader takes for so many characters, whatever they are made of.
QString firstCharacters(const QString &text, qsizetype count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype i = 0; i < count && finder.toNextBoundary() >= 0; ++i)
        ;
    return finder.position() < 0 ? text : text.left(finder.position());
}

TextStyle textStyle(qreal size)
{
    return {.size = size, .weight = QFont::DemiBold, .monospacedDigits = true};
}

QPainterPath capsulePath(const QRectF &rect)
{
    QPainterPath path;
    path.addRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    return path;
}

/// The top of the line whose capitals and digits stand in the middle of `rect`.
qreal lineTop(const QRectF &rect, const TextStyle &style)
{
    const QFontMetricsF metrics(font(style));
    return rect.center().y() + metrics.capHeight() / 2 - metrics.ascent();
}

} // namespace

BadgeView::BadgeView()
    : m_shadow(shadowColor, shadowBlurRadius, shadowOffset)
{
}

QString BadgeView::display(const QString &badge)
{
    if (isWholeNumberAbove999(badge))
        return QStringLiteral("999+");
    return firstCharacters(badge, longestText);
}

qreal BadgeView::fontSize() const
{
    return std::clamp(fontShare * m_iconSize, smallestFont, largestFont);
}

QRectF BadgeView::capsule() const
{
    if (m_text.isEmpty())
        return {};
    const qreal height = std::round(heightShare * fontSize());
    const qreal text = textSize(m_text, textStyle(fontSize())).width();
    const qreal width = std::max(height, std::ceil(text + 2 * paddingShare * fontSize()));
    const qreal overhang = std::round(overhangShare * m_iconSize);
    return {m_iconSize + overhang - width, -overhang, width, height};
}

QRectF BadgeView::boundingRect() const
{
    const QRectF place = capsule();
    if (place.isEmpty())
        return {};
    // Beyond three standard deviations nothing is left of the blur.
    constexpr qreal blur = 1.5 * shadowBlurRadius;
    return place.united(place.translated(shadowOffset).marginsAdded({blur, blur, blur, blur}));
}

void BadgeView::paint(QPainter &painter)
{
    if (m_text.isEmpty())
        return;
    const QRectF place = snappedToPixels(painter, capsule());
    m_shadow.paint(painter, capsulePath(place), boundingRect());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(capsulePath(place), fill);
    const qreal width = outlineShare * fontSize();
    painter.setPen(QPen(outline, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(capsulePath(place.adjusted(width / 2, width / 2, -width / 2, -width / 2)));
    painter.restore();
    const TextStyle style = textStyle(fontSize());
    const qreal left = place.center().x() - textSize(m_text, style).width() / 2;
    drawText(painter, {left, lineTop(place, style)}, m_text, style, Qt::white);
}

} // namespace moorline

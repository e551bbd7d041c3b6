#include "theme/Shadow.h"

#include "theme/Blur.h"
#include "theme/DevicePixels.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

/// How far from the edge of its room a shadow begins to fade, in points.
constexpr qreal fadeLength = 13;

/// From nothing at either end of the room to all of it `length` inside.
qreal fadeAt(qreal place, qreal start, qreal end, qreal length)
{
    return std::clamp(std::min(place - start, end - place) / length, 0.0, 1.0);
}

/// `room` and `length` are in pixels of the mask.
void fadeOut(QImage &mask, const QRectF &room, qreal length)
{
    for (int y = 0; y < mask.height(); ++y) {
        const qreal vertical = fadeAt(y + 0.5, room.top(), room.bottom(), length);
        uchar *row = mask.scanLine(y);
        for (int x = 0; x < mask.width(); ++x)
            row[x] = uchar(qRound(row[x] * vertical * fadeAt(x + 0.5, room.left(), room.right(), length)));
    }
}

QImage tinted(const QImage &mask, const QColor &color)
{
    QImage image(mask.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
    return image;
}

} // namespace

Shadow::Shadow(QColor color, qreal blurRadius, QPointF offset)
    : m_color(color)
    , m_blurRadius(blurRadius)
    , m_offset(offset)
{
}

void Shadow::paint(QPainter &painter, const QPainterPath &shape, const QRectF &room)
{
    if (shape.isEmpty())
        return;
    const qreal scale = deviceScale(painter);
    const QPointF corner = shape.boundingRect().topLeft();
    const QRectF relativeRoom = room.translated(-corner);
    if (m_image.isNull() || m_shape != shape || m_room != relativeRoom || !qFuzzyCompare(m_scale, scale)) {
        m_shape = shape;
        m_room = relativeRoom;
        m_scale = scale;
        m_image = render(scale);
    }
    const qreal margin = blurMargin(m_blurRadius / 2 * scale) / scale;
    const QPointF place = snappedToPixels(painter, corner - QPointF(margin, margin) + m_offset);
    painter.drawImage(QRectF(place, QSizeF(m_image.size()) / scale), m_image);
}

QImage Shadow::render(qreal scale) const
{
    QImage mask = blurredMask(scale);
    const qreal margin = blurMargin(m_blurRadius / 2 * scale) / scale;
    const QPointF origin = m_offset - QPointF(margin, margin);
    const QRectF room = m_room.translated(-origin);
    fadeOut(mask, QRectF(room.topLeft() * scale, room.size() * scale), fadeLength * scale);
    return tinted(mask, m_color);
}

QImage Shadow::blurredMask(qreal scale) const
{
    const qreal standardDeviation = m_blurRadius / 2 * scale;
    const int margin = blurMargin(standardDeviation);
    const QRectF bounds = m_shape.boundingRect();
    QImage mask(
        qCeil(bounds.width() * scale) + 2 * margin, qCeil(bounds.height() * scale) + 2 * margin, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin);
    painter.scale(scale, scale);
    painter.translate(-bounds.topLeft());
    painter.fillPath(m_shape, Qt::black);
    painter.end();
    return blurred(mask, standardDeviation);
}

} // namespace moorline

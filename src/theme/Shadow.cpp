#include "theme/Shadow.h"

#include "theme/Blur.h"
#include "theme/DevicePixels.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <utility>

namespace moorline {

namespace {

/// How far from the edge of its room a shadow begins to fade, in points.
constexpr qreal fadeLength = 13;

/// From nothing at either end of the room to all of it `length` inside.
qreal fadeAt(qreal place, qreal start, qreal end, qreal length)
{
    return std::clamp(std::min(place - start, end - place) / length, 0.0, 1.0);
}

/// `room` and `length` are in pixels of the mask. Nothing fades under the shape, whose `cover` is as large as the mask.
void fadeOut(QImage &mask, const QImage &cover, const QRectF &room, qreal length)
{
    for (int y = 0; y < mask.height(); ++y) {
        const qreal vertical = fadeAt(y + 0.5, room.top(), room.bottom(), length);
        const uchar *covered = cover.constScanLine(y);
        uchar *row = mask.scanLine(y);
        for (int x = 0; x < mask.width(); ++x) {
            const qreal fade = vertical * fadeAt(x + 0.5, room.left(), room.right(), length);
            row[x] = uchar(qRound(row[x] * (fade + (1 - fade) * covered[x] / 255)));
        }
    }
}

/// One byte a pixel, as the mask has: a shadow is kept for as long as its shape is shown.
QImage tinted(QImage mask, const QColor &color)
{
    QList<QRgb> shades;
    for (int cover = 0; cover <= 255; ++cover)
        shades.append(qRgba(color.red(), color.green(), color.blue(), qRound(color.alphaF() * float(cover))));
    mask.reinterpretAsFormat(QImage::Format_Indexed8);
    mask.setColorTable(shades);
    return mask;
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
    const qreal standardDeviation = m_blurRadius / 2 * scale;
    const int margin = blurMargin(standardDeviation);
    const QSizeF bounds = m_shape.boundingRect().size() * scale;
    const QSize size(qCeil(bounds.width()) + 2 * margin, qCeil(bounds.height()) + 2 * margin);
    // Where the corner of the shape's bounds lies in the image when the shape stands above its shadow.
    const QPointF corner = QPointF(margin, margin) - m_offset * scale;
    QImage mask = blurred(silhouette(size, {qreal(margin), qreal(margin)}, scale), standardDeviation);
    const QRectF room(m_room.topLeft() * scale + corner, m_room.size() * scale);
    fadeOut(mask, silhouette(size, corner, scale), room, fadeLength * scale);
    return tinted(std::move(mask), m_color);
}

QImage Shadow::silhouette(const QSize &size, const QPointF &corner, qreal scale) const
{
    QImage image(size, QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(corner);
    painter.scale(scale, scale);
    painter.translate(-m_shape.boundingRect().topLeft());
    painter.fillPath(m_shape, Qt::black);
    return image;
}

} // namespace moorline

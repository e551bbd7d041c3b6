#include "theme/Shadow.h"

#include "theme/Blur.h"
#include "theme/DevicePixels.h"

#include <QPainter>
#include <QtMath>

namespace moorline {

namespace {

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

void Shadow::paint(QPainter &painter, const QPainterPath &shape)
{
    if (shape.isEmpty())
        return;
    const qreal scale = deviceScale(painter);
    if (m_image.isNull() || m_shape != shape || !qFuzzyCompare(m_scale, scale)) {
        m_image = render(shape, scale);
        m_shape = shape;
        m_scale = scale;
    }
    const qreal margin = blurMargin(m_blurRadius / 2 * scale) / scale;
    const QPointF corner = shape.boundingRect().topLeft() - QPointF(margin, margin) + m_offset;
    painter.drawImage(QRectF(snappedToPixels(painter, corner), QSizeF(m_image.size()) / scale), m_image);
}

QImage Shadow::render(const QPainterPath &shape, qreal scale) const
{
    const qreal standardDeviation = m_blurRadius / 2 * scale;
    const int margin = blurMargin(standardDeviation);
    const QRectF bounds = shape.boundingRect();
    QImage mask(
        qCeil(bounds.width() * scale) + 2 * margin, qCeil(bounds.height() * scale) + 2 * margin, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin);
    painter.scale(scale, scale);
    painter.translate(-bounds.topLeft());
    painter.fillPath(shape, Qt::black);
    painter.end();
    return tinted(blurred(mask, standardDeviation), m_color);
}

} // namespace moorline

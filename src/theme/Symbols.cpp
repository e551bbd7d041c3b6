#include "theme/Symbols.h"

#include "theme/DevicePixels.h"

#include <QPainter>

namespace moorline {

namespace {

constexpr qsizetype rememberedImages = 256;
constexpr int iconSides[] = {16, 18, 22, 24, 32, 48, 64};

QString cacheKey(const SymbolRequest &request)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(request.name)
        .arg(request.pointSize)
        .arg(request.scale)
        .arg(request.color.rgba(), 0, 16)
        .arg(int(request.rendering))
        .arg(int(request.weight));
}

/// The picture in the middle of a square, made smaller where it does not fit.
QPixmap squared(const QImage &image, int side)
{
    QPixmap square(side, side);
    square.fill(Qt::transparent);
    const QSizeF size = image.width() > side || image.height() > side
        ? QSizeF(image.size()).scaled(side, side, Qt::KeepAspectRatio)
        : QSizeF(image.size());
    QPainter painter(&square);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QPoint corner(int(side - size.width()) / 2, int(side - size.height()) / 2);
    painter.drawImage(QRectF(corner, size), image);
    return square;
}

} // namespace

Symbols::Symbols(const SymbolCatalogue &catalogue)
    : m_catalogue(catalogue)
    , m_cache(rememberedImages)
{
}

QSizeF Symbols::size(const QString &name, qreal pointSize, SymbolWeight weight) const
{
    return image({name, pointSize, 1, Qt::black, SymbolRendering::monochrome, weight}).deviceIndependentSize();
}

void Symbols::draw(QPainter &painter, const QPointF &topLeft, const QString &name, qreal pointSize, const QColor &color,
    SymbolRendering rendering, SymbolWeight weight) const
{
    const QImage picture = image({name, pointSize, deviceScale(painter), color, rendering, weight});
    if (picture.isNull())
        return;
    // Rounding to whole pixels makes the picture a little smaller at fine scales than the size that was laid out.
    const QSizeF drawn = picture.deviceIndependentSize();
    const QSizeF slack = (size(name, pointSize, weight) - drawn) / 2;
    const QPointF corner = snappedToPixels(painter, topLeft + QPointF(slack.width(), slack.height()));
    painter.drawImage(QRectF(corner, drawn), picture);
}

QIcon Symbols::icon(const QString &name, const QColor &color) const
{
    QIcon icon;
    for (const int side : iconSides) {
        const QImage picture = m_catalogue.symbol({name, side / symbolSideToPointSize, 1, color});
        if (!picture.isNull())
            icon.addPixmap(squared(picture, side));
    }
    icon.setIsMask(true);
    return icon;
}

QImage Symbols::image(const SymbolRequest &request) const
{
    const QString key = cacheKey(request);
    if (const QImage *known = m_cache.object(key))
        return *known;
    QImage fresh = m_catalogue.symbol(request);
    m_cache.insert(key, new QImage(fresh));
    return fresh;
}

} // namespace moorline

#include "platform/linux/desktop/SvgSymbols.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QtMath>

// Q_INIT_RESOURCE declares a function of the global namespace.
static void registerArtwork()
{
    Q_INIT_RESOURCE(symbols);
}

namespace moorline {

namespace {

/// Larger than any screen asks for; a guard against a size that comes from a mistaken scale.
constexpr int largestSide = 2048;
/// A side that is whole but for the error of its computation shall not become one pixel larger.
constexpr qreal roundingError = 1e-6;

const QString gridElement = QStringLiteral("grid");

QByteArray artwork(const SymbolRequest &request)
{
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(request.name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray svg = file.readAll();
    switch (request.rendering) {
    case SymbolRendering::monochrome:
        break;
    case SymbolRendering::hierarchical:
        svg.replace("id=\"secondary\"", "id=\"secondary\" opacity=\"0.5\"");
        break;
    }
    return svg;
}

int pixelSide(const SymbolRequest &request)
{
    const qreal side = request.pointSize * symbolSideToPointSize * request.scale;
    return side > 0 && side <= largestSide ? qCeil(side - roundingError) : 0;
}

/// Where to draw the artwork's whole box so that its outer lines, which its element "grid" tells, run along whole
/// pixels.
QRectF gridFitted(const QSvgRenderer &renderer, int side)
{
    const QRectF box = renderer.viewBoxF();
    const QRectF grid = renderer.elementExists(gridElement) ? renderer.boundsOnElement(gridElement) : box;
    const QTransform plain = QTransform::fromScale(side / box.width(), side / box.height());
    const QRectF fitted = plain.mapRect(grid).toRect();
    const qreal xScale = fitted.width() / grid.width();
    const qreal yScale = fitted.height() / grid.height();
    return {fitted.x() - (grid.x() - box.x()) * xScale, fitted.y() - (grid.y() - box.y()) * yScale,
        box.width() * xScale, box.height() * yScale};
}

} // namespace

SvgSymbols::SvgSymbols()
{
    registerArtwork();
}

QImage SvgSymbols::symbol(const SymbolRequest &request) const
{
    const QByteArray svg = artwork(request);
    const int side = pixelSide(request);
    QSvgRenderer renderer;
    if (svg.isEmpty() || side == 0 || !renderer.load(svg))
        return {};
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, gridFitted(renderer, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), request.color);
    painter.end();
    image.setDevicePixelRatio(request.scale);
    return image;
}

} // namespace moorline

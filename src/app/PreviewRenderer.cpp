#include "app/PreviewRenderer.h"

#include "app/PngFile.h"
#include "theme/Color.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <cmath>

namespace moorline {

namespace {

constexpr QSize size{1600, 138};
constexpr int scale = 2;

QBrush background()
{
    QLinearGradient gradient(0, 0, 0, size.height());
    gradient.setColorAt(0, colorFromHex(QStringLiteral("#2b3a4a")));
    gradient.setColorAt(1, colorFromHex(QStringLiteral("#1b2430")));
    return gradient;
}

} // namespace

PreviewRenderer::PreviewRenderer(std::unique_ptr<DockBarView> bar)
    : m_bar(bar.release())
{
    m_scene.addItem(m_bar);
    // Nobody sees it.
    [[maybe_unused]] const QImage picture = draw();
}

void PreviewRenderer::render(const QString &path)
{
    const auto png = encodedPng(draw());
    if (!png) {
        qInfo("Moorline: preview render failed");
        return;
    }
    if (const auto error = writeFile(path, *png))
        qInfo().noquote() << QStringLiteral("Moorline: could not write preview: ") + *error;
    else
        qInfo().noquote() << QStringLiteral("Moorline: wrote preview to ") + path;
}

QImage PreviewRenderer::draw()
{
    const qreal height = m_bar->bodyHeight();
    m_bar->setGeometry(QRectF(0, std::round((size.height() - height) / 2), size.width(), height));

    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF frame(QPointF(0, 0), QSizeF(size));
    painter.fillRect(frame, background());
    m_scene.render(&painter, frame, frame);
    return image;
}

} // namespace moorline

#include "app/LiveSnapshot.h"

#include "app/PngFile.h"
#include "dock/DockPanel.h"

#include <QImage>

namespace moorline {

std::unique_ptr<Clock::Timer> LiveSnapshot::schedule(
    Clock &clock, std::function<const DockPanel *()> panel, QString path, std::function<void()> terminate)
{
    return clock.after(delay, [panel = std::move(panel), path = std::move(path), terminate = std::move(terminate)] {
        capture(panel(), path);
        terminate();
    });
}

void LiveSnapshot::capture(const DockPanel *panel, const QString &path)
{
    QWidget *content = panel ? panel->content() : nullptr;
    if (!content) {
        qInfo("Moorline: no panel to snapshot");
        return;
    }
    const qreal scale = content->devicePixelRatioF();
    QImage image((QSizeF(content->size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        qInfo("Moorline: could not allocate bitmap");
        return;
    }
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    content->render(&image, {}, {}, QWidget::DrawChildren);
    const auto png = encodedPng(image);
    if (!png) {
        qInfo("Moorline: could not encode snapshot");
        return;
    }
    if (const auto error = writeFile(path, *png))
        qInfo().noquote() << QStringLiteral("Moorline: could not write snapshot: ") + *error;
    else
        qInfo().noquote() << QStringLiteral("Moorline: wrote live snapshot to ") + path;
}

} // namespace moorline

#pragma once

#include "../dock/DockFixture.h"
#include "../weather/Replies.h"
#include "app/BarWidgets.h"
#include "app/Services.h"
#include "chrome/BarWidget.h"

#include <QGraphicsScene>
#include <QGuiApplication>
#include <QPainter>

namespace moorline::test {

/// The program with its widgets, on a faked system at five past one in the afternoon of 4 March 2025, on a dark wall.
/// Symbols are squares of their size.
class PicturesFixture {
public:
    PicturesFixture()
    {
        platform.preferences.setDock(QStringLiteral("bottom"), true);
        change([](Settings &settings) {
            settings.useCurrentLocation = false;
            settings.clockFormat = ClockFormat::twelveHour;
        });
        services.timeKeeper.start();
        services.weather.start();
    }

    template <typename Change>
    void change(Change apply)
    {
        services.store.change(apply);
    }

    bool answerWeather() { return platform.httpClient.answerJson(replies::bytes(replies::forecast())); }

    [[nodiscard]] std::unique_ptr<DockBarView> makeBar()
    {
        return std::make_unique<DockBarView>(
            DockBarView::Context{
                .store = services.store,
                .systemDock = services.systemDock,
                .clock = platform.clock,
                .screens = platform.screens,
                .symbols = services.symbols,
                .stage = services.barStage,
                .commands = commands,
                .makeWidget = [this](WidgetKind kind) { return makeBarWidget(kind, services); },
                .playback = {},
            },
            [](qreal) {});
    }

    /// The item on the wall, at the scale of this run, with a margin that shows what reaches beyond it.
    [[nodiscard]] QImage picture(QGraphicsWidget &item, const QMarginsF &margins = {6, 6, 6, 6}) const
    {
        QGraphicsScene scene;
        scene.addItem(&item);
        const QRectF frame = item.sceneBoundingRect().marginsAdded(margins);
        QImage image = wall(frame.size());
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        scene.render(&painter, QRectF(QPointF(0, 0), frame.size()), frame);
        scene.removeItem(&item);
        return image;
    }

    /// What is shown above the bar now, on the wall.
    [[nodiscard]] QImage picture(QWidget &window) const
    {
        QImage image = wall(window.size());
        window.render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }

    [[nodiscard]] QWidget *shown() const
    {
        return platform.popupWindows.shown.isEmpty() ? nullptr : platform.popupWindows.shown.last();
    }

    FakePlatform platform;
    Services services{platform.ports, RunPlan{}};
    BarCommands commands{.openSettings = [] {}, .quit = [] {}};

private:
    [[nodiscard]] static QImage wall(const QSizeF &size)
    {
        const qreal scale = qGuiApp->devicePixelRatio();
        QImage image((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(QColor(0x4a, 0x64, 0x7d));
        return image;
    }
};

} // namespace moorline::test

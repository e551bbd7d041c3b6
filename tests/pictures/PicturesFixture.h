#pragma once

#include "../dock/DockFixture.h"
#include "../weather/Replies.h"
#include "app/BarWidgets.h"
#include "app/Services.h"
#include "chrome/BarWidget.h"

#include <QGraphicsScene>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>

namespace moorline::test {

/// The program with its widgets, on a faked system at five past one in the afternoon of 4 March 2025, on a dark wall.
/// Symbols are squares of their size, icons are tiles of a colour each.
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
        return moorline::makeBar(services, commands, [](qreal) {});
    }

    /// Pins four applications, of which the second and the last run and the last three have badges.
    void pinApplications()
    {
        QList<AppShortcut> shortcuts;
        QList<BadgeTile> badges;
        const QStringList texts{{}, QStringLiteral("3"), QStringLiteral("42"), QStringLiteral("12345")};
        for (const QString &name :
            {QStringLiteral("Files"), QStringLiteral("Mail"), QStringLiteral("Notes"), QStringLiteral("Chat")}) {
            const AppShortcut shortcut{u'/' + name + QStringLiteral(".app"), QStringLiteral("org.") + name, name};
            platform.appBundles.bundles[shortcut.path] = {.identifier = shortcut.bundleIdentifier, .name = name};
            badges.append({shortcut.path, texts[shortcuts.size()]});
            if (shortcuts.size() % 2)
                platform.workspace.launch(*shortcut.bundleIdentifier, shortcut.path);
            shortcuts.append(shortcut);
        }
        change([&](Settings &settings) {
            settings.appShortcuts = shortcuts;
            settings.showAppBadges = true;
        });
        services.runningApps.start();
        services.badges.start();
        platform.badgeSource.answer(badges);
    }

    /// The item on the wall, at the scale of this run, with a margin that shows what reaches beyond it.
    [[nodiscard]] QImage picture(QGraphicsWidget &item, const QMarginsF &margins = {6, 6, 6, 6})
    {
        QGraphicsScene scene;
        scene.addItem(&item);
        // What is painted for the first time asks for its icons.
        [[maybe_unused]] const QImage first = painted(scene, item, margins);
        answerIcons();
        const QImage image = painted(scene, item, margins);
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

    /// Something plays in this style, or is paused.
    void playMusic(MusicStyle style, bool isPlaying = true)
    {
        change([style](Settings &settings) { settings.musicStyle = style; });
        platform.mediaPlayers.say(MusicSource::music,
            {.isPlaying = isPlaying,
                .trackId = QStringLiteral("1"),
                .title = QStringLiteral("The harbour at six in the morning"),
                .artist = QStringLiteral("The Moorings"),
                .album = QStringLiteral("Tides"),
                .duration = 200,
                .position = 85,
                .artwork = QUrl(QStringLiteral("file:///tmp/cover.png"))});
        services.nowPlaying.start();
    }

    void answerIcons()
    {
        while (platform.pictures.running() > 0)
            platform.pictures.answer(cover());
        FakeIcons &icons = platform.icons;
        while (icons.running() > 0)
            icons.answer(hasIcons ? tile(icons.requested[icons.requested.size() - icons.running()]) : QImage());
    }

    /// Whether there are icons of anything.
    bool hasIcons = true;
    FakePlatform platform;
    Services services{platform.ports, RunPlan{}};
    BarCommands commands{.openSettings = [] {}, .quit = [] {}};

private:
    [[nodiscard]] static QImage painted(QGraphicsScene &scene, const QGraphicsWidget &item, const QMarginsF &margins)
    {
        const QRectF frame = item.sceneBoundingRect().marginsAdded(margins);
        QImage image = wall(frame.size());
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        scene.render(&painter, QRectF(QPointF(0, 0), frame.size()), frame);
        return image;
    }

    /// The artwork of every track, wider than high.
    [[nodiscard]] static QImage cover()
    {
        QImage image(138, 138, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QLinearGradient sky(0, 0, 0, image.height());
        sky.setColorAt(0, QColor(0x2b, 0x1d, 0x5e));
        sky.setColorAt(1, QColor(0xf2, 0x7b, 0x52));
        painter.fillRect(image.rect(), sky);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xff, 0xd9, 0x8a));
        painter.drawEllipse(QPointF(69, 92), 30, 30);
        return image;
    }

    /// As large as most icons are drawn within their square.
    [[nodiscard]] static QImage tile(const IconRequest &request)
    {
        QImage image = FakeIcons::square(request, Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal side = request.size;
        const QRectF place = QRectF(0, 0, side, side).adjusted(side / 16, side / 16, -side / 16, -side / 16);
        QPainterPath outline;
        outline.addRoundedRect(place, side / 5, side / 5);
        painter.fillPath(outline, QColor::fromHsv(request.subject.at(1).unicode() * 37 % 360, 170, 215));
        painter.setPen(QPen(Qt::white, side / 14));
        painter.drawEllipse(place.center(), side / 5, side / 5);
        return image;
    }

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

#pragma once

#include "MusicFixture.h"
#include "RepaintCounter.h"
#include "fakes/FakePlatform.h"
#include "fakes/SettingsGround.h"
#include "music/ArtworkView.h"
#include "music/Covers.h"
#include "music/MusicWidget.h"
#include "music/ProgressBar.h"
#include "music/TransportButton.h"
#include "theme/Symbols.h"
#include "time/TimeKeeper.h"

namespace moorline::test {

/// The widget over a service that polls players which say what a test has them say.
struct WidgetFixture {
    WidgetFixture()
    {
        keeper.start();
        service.start();
    }

    [[nodiscard]] MusicWidget::Context context()
    {
        return {.store = store, .service = service, .keeper = keeper, .covers = covers, .symbols = symbols};
    }
    void setStyle(MusicStyle style)
    {
        store.change([style](Settings &settings) { settings.musicStyle = style; });
    }
    /// Spotify says this, and tells that it does.
    void say(const PlayerReport &report)
    {
        platform.mediaPlayers.say(MusicSource::spotify, report);
        platform.mediaPlayers.change();
    }
    void quit()
    {
        platform.mediaPlayers.quit(MusicSource::spotify);
        platform.mediaPlayers.change();
    }
    /// What was asked of a symbol, the last time.
    [[nodiscard]] SymbolRequest lastRequest(const QString &name) const
    {
        const auto &requests = platform.symbolCatalogue.requests;
        for (auto request = requests.rbegin(); request != requests.rend(); ++request) {
            if (request->name == name)
                return *request;
        }
        return {};
    }

    FakePlatform platform;
    SettingsStore store{storeContext(platform)};
    NowPlayingService service{platform.mediaPlayers, platform.clock};
    TimeKeeper keeper{platform.clock};
    Covers covers{{.pictures = platform.pictures, .client = platform.httpClient, .clock = platform.clock}};
    Symbols symbols{platform.symbolCatalogue};
};

/// What a widget consists of.
struct Parts {
    explicit Parts(const MusicWidget &widget)
    {
        for (QGraphicsItem *child : widget.childItems()) {
            if (auto *found = dynamic_cast<ArtworkView *>(child))
                artwork = found;
            else if (auto *bar = dynamic_cast<ProgressBar *>(child))
                progress = bar;
            else if (auto *button = dynamic_cast<TransportButton *>(child))
                buttons.append(button);
        }
    }

    ArtworkView *artwork = nullptr;
    ProgressBar *progress = nullptr;
    /// Previous, play or pause, next.
    QList<TransportButton *> buttons;
};

/// What a scene shows of the item and all within it, on nothing.
[[nodiscard]] inline QImage rendered(QGraphicsWidget &widget, qreal scale = 1)
{
    QGraphicsScene scene;
    scene.addItem(&widget);
    QImage image((widget.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    scene.render(&painter, widget.rect(), widget.rect());
    painter.end();
    scene.removeItem(&widget);
    return image;
}

} // namespace moorline::test

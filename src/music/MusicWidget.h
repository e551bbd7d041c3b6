#pragma once

#include "chrome/BarWidget.h"
#include "platform/MediaPlayers.h"
#include "settings/Settings.h"

namespace moorline {

class ArtworkView;
class Covers;
class NowPlayingService;
class ProgressBar;
class SettingsStore;
class Symbols;
class TimeKeeper;
class TransportButton;

/// What plays: its artwork, title and artist and, in the fuller of two styles, buttons for the player and how far the
/// track has come.
class MusicWidget final : public BarWidget {
    Q_OBJECT
public:
    /// Everything lent here outlives the widget.
    struct Context {
        const SettingsStore &store;
        NowPlayingService &service;
        const TimeKeeper &keeper;
        Covers &covers;
        const Symbols &symbols;
    };

    explicit MusicWidget(Context context, QGraphicsItem *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    /// What is written, and around what.
    struct Shown {
        MusicStyle style = MusicStyle::player;
        bool hasTrack = false;
        QString title;
        /// Empty: there is no such line.
        QString artist;

        bool operator==(const Shown &) const = default;
    };
    /// Where the parts are, in points.
    struct Places {
        qreal height = 0;
        qreal title = 0;
        qreal artist = 0;
        qreal controls = 0;
        qreal progress = 0;
    };

    void measure() override;
    [[nodiscard]] TransportButton *addButton(MusicCommand command, qreal symbolSize);
    [[nodiscard]] Shown shownNow() const;
    [[nodiscard]] Places places() const;
    void refresh();
    void refreshParts();
    void layOut();
    void tick();

    Context m_context;
    ArtworkView *m_artwork;
    TransportButton *m_previous;
    TransportButton *m_playPause;
    TransportButton *m_next;
    ProgressBar *m_progress;
    Shown m_shown;
};

} // namespace moorline

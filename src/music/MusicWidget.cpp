#include "music/MusicWidget.h"

#include "music/ArtworkView.h"
#include "music/NowPlayingService.h"
#include "music/ProgressBar.h"
#include "music/TransportButton.h"
#include "settings/Choices.h"
#include "settings/SettingsStore.h"
#include "theme/Text.h"
#include "theme/Theme.h"
#include "time/TimeKeeper.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

constexpr TextStyle titleStyle{.size = 13, .weight = QFont::Medium};
constexpr TextStyle artistStyle{.size = 11};
constexpr qreal lineGap = 3;

/// Between the artwork and the column beside it, and between what stands side by side in that.
constexpr qreal itemGap = 10;
constexpr qreal columnLeft = ArtworkView::side + itemGap;
constexpr qreal compactWidth = 130;
constexpr qreal playerWidth = 232;
constexpr qreal rowGap = 5;

constexpr qreal buttonGap = 12;
constexpr qreal plainSymbol = 11;
constexpr qreal emphasizedSymbol = 12;
constexpr qreal controlsWidth = 18 + buttonGap + 22 + buttonGap + 18;
constexpr qreal controlsHeight = 22;
constexpr qreal smallestSpacer = 8;

constexpr qreal widestText = 130;
constexpr qreal roomBesideControls = playerWidth - itemGap - smallestSpacer - itemGap - controlsWidth;

/// Longer than anything that fits, and short enough to be measured.
constexpr qsizetype longestLine = 256;

qreal textWidth(MusicStyle style)
{
    switch (style) {
    case MusicStyle::compact:
        return widestText;
    case MusicStyle::player:
        return std::min(widestText, roomBesideControls);
    }
    Q_UNREACHABLE();
}

qreal columnWidth(MusicStyle style)
{
    switch (style) {
    case MusicStyle::compact:
        return compactWidth;
    case MusicStyle::player:
        return playerWidth;
    }
    Q_UNREACHABLE();
}

/// A single line of what someone else wrote.
QString line(const QString &text)
{
    return text.left(longestLine).simplified();
}

/// What is written, without being shortened.
QString whole(const NowPlaying &current)
{
    if (!current.hasTrack())
        return MusicWidget::tr("Nothing playing");
    const QString artist = line(current.artist);
    return artist.isEmpty() ? line(current.title) : line(current.title) + QStringLiteral(", ") + artist;
}

qreal lineHeight(const TextStyle &style)
{
    return textSize({}, style).height();
}

} // namespace

MusicWidget::MusicWidget(Context context, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_context(context)
    , m_artwork(new ArtworkView(context.covers, context.symbols, this))
    , m_previous(addButton(MusicCommand::previous, plainSymbol))
    , m_playPause(addButton(MusicCommand::playPause, emphasizedSymbol))
    , m_next(addButton(MusicCommand::next, plainSymbol))
    , m_progress(new ProgressBar(this))
{
    m_previous->show(QStringLiteral("backward.end.fill"), tr("Previous"));
    m_next->show(QStringLiteral("forward.end.fill"), tr("Next"));
    m_progress->resize(playerWidth, ProgressBar::height);
    connect(m_artwork, &BarItem::clicked, &context.service, &NowPlayingService::openPlayer);
    connect(&context.service, &NowPlayingService::currentChanged, this, &MusicWidget::refresh);
    connect(&context.store, &SettingsStore::settingsDidChange, this, &MusicWidget::refresh);
    connect(&context.keeper, &TimeKeeper::nowChanged, this, &MusicWidget::tick);
    m_shown = shownNow();
    layOut();
    refreshParts();
}

TransportButton *MusicWidget::addButton(MusicCommand command, qreal symbolSize)
{
    const auto emphasis =
        command == MusicCommand::playPause ? TransportButton::Emphasis::emphasized : TransportButton::Emphasis::plain;
    auto *button = new TransportButton(m_context.symbols, symbolSize, emphasis, this);
    connect(button, &BarItem::clicked, &m_context.service,
        [service = &m_context.service, command] { service->send(command); });
    return button;
}

MusicWidget::Shown MusicWidget::shownNow() const
{
    const NowPlaying &current = m_context.service.current();
    const MusicStyle style = m_context.store.settings().musicStyle;
    const qreal width = textWidth(style);
    const QString title = current.hasTrack() ? line(current.title) : tr("Nothing playing");
    const QString artist = current.source ? line(current.artist) : QString();
    return {.style = style,
        .hasTrack = current.hasTrack(),
        .title = elided(title, titleStyle, width),
        .artist = elided(artist, artistStyle, width)};
}

MusicWidget::Places MusicWidget::places() const
{
    const bool isPlayer = m_shown.style == MusicStyle::player;
    const qreal artist = m_shown.artist.isEmpty() ? 0 : lineGap + lineHeight(artistStyle);
    const qreal text = lineHeight(titleStyle) + artist;
    const qreal firstRow = isPlayer ? std::max(text, controlsHeight) : text;
    const qreal column = firstRow + (isPlayer && m_shown.hasTrack ? rowGap + ProgressBar::height : 0);
    const qreal height = std::max(ArtworkView::side, std::ceil(column));
    const qreal top = (height - column) / 2;
    const qreal title = top + (firstRow - text) / 2;
    return {.height = height,
        .title = title,
        .artist = title + lineHeight(titleStyle) + lineGap,
        .controls = top + (firstRow - controlsHeight) / 2,
        .progress = top + firstRow + rowGap};
}

void MusicWidget::measure()
{
    m_shown = shownNow();
    layOut();
}

void MusicWidget::refresh()
{
    const Shown shown = shownNow();
    if (shown != m_shown) {
        m_shown = shown;
        layOut();
    }
    refreshParts();
}

void MusicWidget::layOut()
{
    const Places at = places();
    const bool isPlayer = m_shown.style == MusicStyle::player;
    m_artwork->setPos(0, std::round((at.height - ArtworkView::side) / 2));
    qreal x = columnLeft + playerWidth - controlsWidth;
    for (TransportButton *button : {m_previous, m_playPause, m_next}) {
        button->setVisible(isPlayer);
        // Symbols and edges are sharp on whole points.
        button->setPos(x, std::round(at.controls));
        x += button->size().width() + buttonGap;
    }
    m_progress->setVisible(isPlayer && m_shown.hasTrack);
    m_progress->setPos(columnLeft, std::round(at.progress));
    setNaturalSize({columnLeft + columnWidth(m_shown.style), at.height});
    update();
    Q_EMIT itemsMoved();
}

void MusicWidget::refreshParts()
{
    const NowPlaying &current = m_context.service.current();
    m_artwork->show({.trackId = current.trackId,
        .url = current.artworkUrl,
        .isPlaying = current.isPlaying,
        .hasPlayer = current.source.has_value()});
    m_playPause->show(current.isPlaying ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"),
        current.isPlaying ? tr("Pause") : tr("Play"));
    m_previous->setUsable(m_shown.hasTrack && current.obeys(MusicCommand::previous));
    m_playPause->setUsable(m_shown.hasTrack && current.obeys(MusicCommand::playPause));
    m_next->setUsable(m_shown.hasTrack && current.obeys(MusicCommand::next));
    m_progress->setProgress(current.progress(m_context.keeper.now()));
    setDescription({.role = QAccessible::Grouping, .name = label(WidgetKind::music), .state = whole(current)});
}

void MusicWidget::tick()
{
    const NowPlaying &current = m_context.service.current();
    if (m_progress->isVisible() && current.isPlaying)
        m_progress->setProgress(current.progress(m_context.keeper.now()));
}

void MusicWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const Places at = places();
    const QColor titleColor = m_shown.hasTrack ? Theme::primaryText : Theme::tertiaryText;
    drawText(*painter, {columnLeft, at.title}, m_shown.title, titleStyle, titleColor);
    drawText(*painter, {columnLeft, at.artist}, m_shown.artist, artistStyle, Theme::secondaryText);
}

} // namespace moorline

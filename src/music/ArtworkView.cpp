#include "music/ArtworkView.h"

#include "music/Covers.h"
#include "theme/DevicePixels.h"
#include "theme/Shapes.h"
#include "theme/Symbols.h"
#include "theme/Theme.h"

#include <QPainter>
#include <QtMath>

namespace moorline {

namespace {

constexpr qreal cornerRadius = 10;
const QColor placeholderFill = QColor::fromRgbF(1, 1, 1, 0.08F);
constexpr qreal symbolSize = 16;

/// The picture fills the artwork's outline at this scale, and stands over in nothing else.
QImage clipped(const QImage &picture, qreal scale)
{
    const int pixels = qCeil(ArtworkView::side * scale);
    const QImage square = picture.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRoundedRect(QRectF(0, 0, pixels, pixels), cornerRadius * scale), Qt::white);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.drawImage(QPointF(0, 0), square);
    painter.end();
    image.setDevicePixelRatio(scale);
    return image;
}

} // namespace

ArtworkView::ArtworkView(Covers &covers, const Symbols &symbols, QGraphicsItem *parent)
    : BarItem(parent)
    , m_covers(covers)
    , m_symbols(symbols)
{
    resize(side, side);
    setDescription({.role = QAccessible::Graphic, .name = tr("Artwork"), .state = {}});
    connect(&covers, &Covers::changed, this, &ArtworkView::look);
}

void ArtworkView::show(const Shown &shown)
{
    if (shown == m_shown)
        return;
    const bool isAnother = shown.trackId != m_shown.trackId || shown.url != m_shown.url;
    if (shown.hasPlayer != m_shown.hasPlayer) {
        setTouchable(shown.hasPlayer);
        setDescription({.role = shown.hasPlayer ? QAccessible::Button : QAccessible::Graphic,
            .name = shown.hasPlayer ? tr("Open Player") : tr("Artwork"),
            .state = {}});
    }
    m_shown = shown;
    if (isAnother) {
        m_picture = {};
        m_clipped = {};
        look();
    }
    if (isAnother || m_picture.isNull())
        update(rect());
}

void ArtworkView::look()
{
    // What is there is kept: it may be nowhere else any more.
    if (!m_shown.url || !m_picture.isNull())
        return;
    m_picture = m_covers.picture(m_shown.trackId, *m_shown.url);
    if (!m_picture.isNull())
        update(rect());
}

QRectF ArtworkView::boundingRect() const
{
    // Beyond both edges of the pill, which takes no input outside of itself.
    constexpr qreal reach = 24;
    return rect().marginsAdded({0, reach, 0, reach});
}

QPainterPath ArtworkView::shape() const
{
    QPainterPath area;
    area.addRect(boundingRect());
    return area;
}

void ArtworkView::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    if (m_picture.isNull())
        return paintPlaceholder(*painter);
    const qreal scale = deviceScale(*painter);
    if (m_clipped.isNull() || !qFuzzyCompare(m_clipped.devicePixelRatio(), scale))
        m_clipped = clipped(m_picture, scale);
    painter->drawImage(snappedToPixels(*painter, rect().topLeft()), m_clipped);
}

void ArtworkView::paintPlaceholder(QPainter &painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRoundedRect(rect(), cornerRadius), placeholderFill);
    const QString name = m_shown.isPlaying ? QStringLiteral("waveform") : QStringLiteral("music.note");
    const QSizeF symbol = m_symbols.size(name, symbolSize);
    const QPointF corner((side - symbol.width()) / 2, (side - symbol.height()) / 2);
    m_symbols.draw(painter, corner, name, symbolSize, Theme::tertiaryText);
}

} // namespace moorline

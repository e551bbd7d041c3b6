#pragma once

#include "chrome/BarItem.h"

#include <QImage>
#include <QUrl>

namespace moorline {

class Covers;
class Symbols;

/// The artwork of what plays, or a symbol in its place. What was seen of it stays, whatever becomes of its file. A
/// click opens the player.
class ArtworkView final : public BarItem {
    Q_OBJECT
public:
    /// What there is to see.
    struct Shown {
        /// Of which track, so that another one at the same address is another picture.
        QString trackId;
        std::optional<QUrl> url;
        bool isPlaying = false;
        /// Whether there is a player to open.
        bool hasPlayer = false;

        bool operator==(const Shown &) const = default;
    };

    /// Width and height, in points.
    static constexpr qreal side = 46;

    /// Both outlive the view.
    ArtworkView(Covers &covers, const Symbols &symbols, QGraphicsItem *parent);

    void show(const Shown &shown);
    /// Null while a symbol stands in its place.
    [[nodiscard]] const QImage &picture() const { return m_picture; }

    /// Higher than what is painted: a pointer that is thrown at the edge of the screen hits as well.
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void look();
    void paintPlaceholder(QPainter &painter) const;

    Covers &m_covers;
    const Symbols &m_symbols;
    Shown m_shown;
    QImage m_picture;
    /// The picture as it is painted, for the scale of the last painting.
    QImage m_clipped;
};

} // namespace moorline

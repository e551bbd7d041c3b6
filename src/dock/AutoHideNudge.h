#pragma once

#include <QGraphicsWidget>

namespace moorline {

class Symbols;

/// The strip above the pill that offers to make the desktop's dock hide when it lies underneath.
class AutoHideNudge final : public QGraphicsWidget {
    Q_OBJECT
public:
    AutoHideNudge(const Symbols &symbols, QGraphicsItem *parent = nullptr);

    /// The width at which nothing is cut off, in points.
    [[nodiscard]] qreal naturalWidth() const;
    /// The shape of the strip in its own coordinates.
    [[nodiscard]] QPainterPath outline() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    void accepted();

protected:
    void hideEvent(QHideEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    [[nodiscard]] QRectF buttonRect() const;
    [[nodiscard]] qreal buttonWidth() const;
    void paintButton(QPainter &painter) const;
    void setHovered(bool hovered);

    const Symbols &m_symbols;
    QString m_text;
    QString m_buttonText;
    bool m_hovered = false;
    bool m_pressed = false;
};

} // namespace moorline

#pragma once

#include "chrome/BarItem.h"

namespace moorline {

class NudgeButton;
class Symbols;

/// The strip above the pill that offers to make the desktop's dock hide when it lies underneath.
class AutoHideNudge final : public BarItem {
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
    /// The desktop's font is another one, with which the strip is wider or narrower.
    void naturalWidthChanged();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;

private:
    void placeButton();

    QString m_text;
    NudgeButton *m_button;
    /// As it was last told.
    qreal m_naturalWidth;
};

} // namespace moorline

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

protected:
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;

private:
    QString m_text;
    NudgeButton *m_button;
};

} // namespace moorline

#pragma once

#include "platform/PanelWindow.h"

#include <QWidget>

namespace moorline::test {

/// Keeps what it is told; the widget gets the size and is shown, so that its layout is real.
class FakePanelWindow : public PanelWindow {
public:
    void adopt(QWidget &panel) override { widget = &panel; }
    void setLevel(int newLevel) override { currentLevel = newLevel; }
    [[nodiscard]] int level() const override { return currentLevel; }
    void setCollectionBehavior(unsigned newBehavior) override { behavior = newBehavior; }
    void setFrame(const QRectF &frame) override
    {
        frames.append(frame);
        widget->resize(frame.size().toSize());
    }
    [[nodiscard]] QRectF frame() const override { return frames.isEmpty() ? QRectF() : frames.last(); }
    /// Twice as large and beside the origin, so that it is no other coordinates.
    [[nodiscard]] QRect accessibleRect(const QRectF &part) const override
    {
        return QRectF(100 + 2 * part.x(), 50 + 2 * part.y(), 2 * part.width(), 2 * part.height()).toRect();
    }
    void orderFrontRegardless() override
    {
        ++timesOrderedFront;
        widget->show();
    }
    void setInteractiveArea(const QPainterPath &area) override { interactiveArea = area; }

    QWidget *widget = nullptr;
    int currentLevel = 0;
    unsigned behavior = 0;
    /// Every frame that was set, oldest first.
    QList<QRectF> frames;
    int timesOrderedFront = 0;
    QPainterPath interactiveArea;
};

} // namespace moorline::test

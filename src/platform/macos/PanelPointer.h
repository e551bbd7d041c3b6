#pragma once

#include "platform/PanelPointerRule.h"
#import "platform/macos/EventMonitor.h"
#import "platform/macos/MoorlinePanel.h"

#include <QPainterPath>
#include <QPointer>
#include <QWidget>

namespace moorline {

/// The pointer's dealings with the panel that AppKit and Qt leave open: tells the rule what there is to see, and does
/// what it answers.
class PanelPointer final {
public:
    PanelPointer(MoorlinePanel *panel, QWidget &widget);

    /// In points, origin at the top left of the panel.
    void setInteractiveArea(const QPainterPath &area);
    /// For when the panel moved under the pointer; the pointer's own moves are followed without it.
    void update() { look(true); }

private:
    void look(bool hasMoved);
    [[nodiscard]] QPointF positionInPanel() const;
    void letThrough(bool through);
    void tellWidgets(const PanelPointerRule::Answer &answer, const QPointF &position);
    void sendEnter(const QPointF &position);
    void sendMove(const QPointF &position);
    void sendLeave();

    MoorlinePanel *const m_panel;
    const QPointer<QWidget> m_widget;
    QPainterPath m_area;
    PanelPointerRule m_rule;
    EventMonitor m_moveMonitor;
    EventMonitor m_releaseMonitor;
};

} // namespace moorline

#pragma once

#import "platform/macos/EventMonitor.h"
#import "platform/macos/MoorlinePanel.h"

#include <QPainterPath>
#include <QPointer>
#include <QWidget>

namespace moorline {

/// The pointer's dealings with the panel that AppKit and Qt leave open.
///
/// A window either takes every pointer event or none, so it is switched as the pointer crosses the edge of the
/// interactive area. And Qt follows a moving pointer only while the application is active, which a bar hardly ever is;
/// meanwhile its widgets are told from here.
class PanelPointer final {
public:
    PanelPointer(MoorlinePanel *panel, QWidget &widget);

    /// In points, origin at the top left of the panel.
    void setInteractiveArea(const QPainterPath &area);
    /// For when the panel moved under the pointer; the pointer's own moves are followed without it.
    void update();

private:
    [[nodiscard]] QPointF positionInPanel() const;
    void letThrough(bool through);
    void tellWidgets(bool isInside, const QPointF &position);
    void sendEnter(const QPointF &position);
    void sendMove(const QPointF &position);
    void sendLeave();

    MoorlinePanel *const m_panel;
    const QPointer<QWidget> m_widget;
    QPainterPath m_area;
    bool m_widgetsKnow = false;
    EventMonitor m_monitor;
};

} // namespace moorline

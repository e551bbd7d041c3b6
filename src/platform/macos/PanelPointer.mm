#import "platform/macos/PanelPointer.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QWindow>
#include <utility>

namespace moorline {

namespace {

// A button's release counts as a move: it ends a drag that kept the panel from letting go.
constexpr NSEventMask pointerMoves = NSEventMaskMouseMoved | NSEventMaskLeftMouseDragged | NSEventMaskRightMouseDragged
    | NSEventMaskOtherMouseDragged | NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp | NSEventMaskOtherMouseUp;

} // namespace

PanelPointer::PanelPointer(MoorlinePanel *panel, QWidget &widget)
    : m_panel(panel)
    , m_widget(&widget)
    , m_monitor(pointerMoves, [this] { update(); })
{
}

void PanelPointer::setInteractiveArea(const QPainterPath &area)
{
    m_area = area;
    update();
}

void PanelPointer::update()
{
    const QPointF position = positionInPanel();
    const bool isInside = m_area.contains(position);
    const bool isPressed = NSEvent.pressedMouseButtons != 0;
    if (isInside || !isPressed)
        letThrough(!isInside);
    if (!NSApp.active && !isPressed)
        tellWidgets(isInside, position);
}

QPointF PanelPointer::positionInPanel() const
{
    const NSPoint location = NSEvent.mouseLocation;
    const NSRect frame = m_panel.frame;
    return {location.x - NSMinX(frame), NSMaxY(frame) - location.y};
}

void PanelPointer::letThrough(bool through)
{
    if (bool(m_panel.ignoresMouseEvents) != through)
        m_panel.ignoresMouseEvents = through;
}

void PanelPointer::tellWidgets(bool isInside, const QPointF &position)
{
    if (!m_widget || !m_widget->windowHandle())
        return;
    const bool knew = std::exchange(m_widgetsKnow, isInside);
    if (isInside && !knew)
        sendEnter(position);
    if (isInside)
        sendMove(position);
    if (knew && !isInside)
        sendLeave();
}

void PanelPointer::sendEnter(const QPointF &position)
{
    QEnterEvent event(position, position, m_widget->mapToGlobal(position));
    QCoreApplication::sendEvent(m_widget->windowHandle(), &event);
}

void PanelPointer::sendMove(const QPointF &position)
{
    QMouseEvent event(QEvent::MouseMove, position, position, m_widget->mapToGlobal(position), Qt::NoButton,
        Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_widget->windowHandle(), &event);
}

void PanelPointer::sendLeave()
{
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(m_widget->windowHandle(), &event);
}

} // namespace moorline

#import "platform/macos/PanelPointer.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QWindow>

namespace moorline {

namespace {

constexpr NSEventMask moves =
    NSEventMaskMouseMoved | NSEventMaskLeftMouseDragged | NSEventMaskRightMouseDragged | NSEventMaskOtherMouseDragged;
constexpr NSEventMask releases = NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp | NSEventMaskOtherMouseUp;

} // namespace

PanelPointer::PanelPointer(MoorlinePanel *panel, QWidget &widget)
    : m_panel(panel)
    , m_widget(&widget)
    , m_moveMonitor(moves, [this](NSEvent *) { look(true); })
    , m_releaseMonitor(releases, [this](NSEvent *) { look(false); })
{
}

void PanelPointer::setInteractiveArea(const QPainterPath &area)
{
    m_area = area;
    update();
}

void PanelPointer::look(bool hasMoved)
{
    const QPointF position = positionInPanel();
    const auto answer = m_rule.see({
        .isInside = m_area.contains(position),
        .isPressed = NSEvent.pressedMouseButtons != 0,
        .isApplicationActive = bool(NSApp.active),
        .hasMoved = hasMoved,
    });
    if (answer.letsThrough)
        letThrough(*answer.letsThrough);
    tellWidgets(answer, position);
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

void PanelPointer::tellWidgets(const PanelPointerRule::Answer &answer, const QPointF &position)
{
    if (!m_widget || !m_widget->windowHandle())
        return;
    if (answer.enters)
        sendEnter(position);
    if (answer.moves)
        sendMove(position);
    if (answer.leaves)
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

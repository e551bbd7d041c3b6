#include "platform/linux/x11/X11PanelWindow.h"

#include "platform/linux/x11/PanelHints.h"
#include "platform/linux/x11/QtConnection.h"
#include "platform/linux/x11/X11Coordinates.h"
#include "platform/linux/x11/XConnection.h"

#include <QPlatformSurfaceEvent>
#include <QWindow>
#include <algorithm>

namespace moorline {

namespace {

/// The widget itself would go on naming a window that Qt has replaced.
xcb_window_t nativeWindow(const QWidget &panel)
{
    return static_cast<xcb_window_t>(panel.windowHandle()->winId());
}

} // namespace

X11PanelWindow::X11PanelWindow(XConnection &connection, ClientWindows &clients, Clock &clock)
    : m_connection(connection)
    , m_clock(clock)
    , m_stacking(connection, clients, clock)
{
    connect(&connection, &XConnection::compositionChanged, this, &X11PanelWindow::updateShape);
}

void X11PanelWindow::adopt(QWidget &panel)
{
    m_panel = &panel;
    panel.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint | Qt::BypassWindowManagerHint
        | Qt::WindowDoesNotAcceptFocus);
    panel.setAttribute(Qt::WA_TranslucentBackground);
    panel.setAttribute(Qt::WA_ShowWithoutActivating);
    panel.setAttribute(Qt::WA_X11DoNotAcceptFocus);
    panel.winId();
    panel.windowHandle()->installEventFilter(this);
    m_dropTarget.emplace(m_connection, m_clock, *panel.windowHandle());
    takeNativeWindow();
}

void X11PanelWindow::takeNativeWindow()
{
    m_shape.emplace(qtConnection(), nativeWindow(*m_panel));
    writePanelHints(qtConnection(), m_connection, nativeWindow(*m_panel));
    updateShape();
}

bool X11PanelWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PlatformSurface) {
        const auto type = static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType();
        if (type == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
            m_shape.reset();
        else
            // Once Qt is done with making it.
            QMetaObject::invokeMethod(this, &X11PanelWindow::showAgain, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void X11PanelWindow::showAgain()
{
    if (!m_panel || !m_panel->windowHandle())
        return;
    takeNativeWindow();
    if (!m_isOrderedFront)
        return;
    m_panel->windowHandle()->setVisible(true);
    orderFrontRegardless();
}

void X11PanelWindow::setCollectionBehavior([[maybe_unused]] unsigned behavior)
{
}

void X11PanelWindow::setFrame(const QRectF &frame)
{
    m_panel->setGeometry(X11Coordinates::current().qtFromFrame(frame).toRect());
    updateShape();
}

QRectF X11PanelWindow::frame() const
{
    return m_panel ? X11Coordinates::current().frameFromQt(m_panel->geometry()) : QRectF();
}

QRect X11PanelWindow::accessibleRect(const QRectF &part) const
{
    const QRectF panel = frame();
    const qreal bottom = panel.y() + panel.height() - part.bottom();
    return X11Coordinates::current().nativeFromFrame({panel.x() + part.x(), bottom, part.width(), part.height()});
}

void X11PanelWindow::orderFrontRegardless()
{
    m_isOrderedFront = true;
    waitForQt();
    m_stacking.keepInPlace(nativeWindow(*m_panel));
    m_panel->show();
    // Qt writes some of the hints anew when it maps a window.
    writePanelHints(qtConnection(), m_connection, nativeWindow(*m_panel));
}

void X11PanelWindow::setInteractiveArea(const QPainterPath &area)
{
    m_area = area;
    updateShape();
}

void X11PanelWindow::updateShape()
{
    if (!m_panel || !m_shape)
        return;
    const X11Coordinates coordinates = X11Coordinates::current();
    m_shape->setInput(m_area ? std::optional(rasterized(*m_area, coordinates.primaryScale())) : std::nullopt);
    m_shape->setBounding(boundingRegion(coordinates));
}

/// Nothing of the panel may be seen on a screen below the primary one, into which it slides when it hides.
std::optional<QRegion> X11PanelWindow::boundingRegion(const X11Coordinates &coordinates) const
{
    const QRect window = coordinates.nativeFromFrame(frame());
    const QRect primary = coordinates.nativePrimary();
    if (!window.intersects(primary))
        return QRegion();
    // Without a compositor the transparent parts would be black.
    const bool isCut = m_area && !m_connection.isComposited();
    const auto screens = coordinates.nativeScreens();
    const bool reachesOver = std::any_of(screens.begin(), screens.end(),
        [&](const QRect &screen) { return screen != primary && screen.intersects(window); });
    if (!isCut && !reachesOver)
        return std::nullopt;
    QRegion region = isCut ? rasterized(*m_area, coordinates.primaryScale()) : QRect({}, window.size());
    return reachesOver ? region & primary.translated(-window.topLeft()) : region;
}

} // namespace moorline

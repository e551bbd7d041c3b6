#include "platform/linux/x11/X11Screens.h"

#include "platform/linux/x11/X11Coordinates.h"
#include "platform/linux/x11/XConnection.h"

#include <QGuiApplication>
#include <QScreen>

namespace moorline {

X11Screens::X11Screens(XConnection *connection)
    : m_connection(connection)
{
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &Screens::screensChanged);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &Screens::screensChanged);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen *screen) {
        follow(screen);
        Q_EMIT screensChanged();
    });
    for (QScreen *screen : QGuiApplication::screens())
        follow(screen);
    if (!m_connection)
        return;
    m_hasMonitors = m_connection->hasMonitors();
    connect(m_connection, &XConnection::monitorsChanged, this, &X11Screens::updateMonitors);
}

QList<Screen> X11Screens::screens() const
{
    const auto available = QGuiApplication::screens();
    // With every output dark, Qt keeps one screen that is none.
    if (!m_hasMonitors && available.size() <= 1)
        return {};
    const X11Coordinates coordinates = X11Coordinates::current();
    QList<Screen> screens;
    for (const QScreen *screen : available) {
        screens.append({.frame = coordinates.frameFromQt(screen->geometry()),
            .visibleFrame = coordinates.frameFromQt(screen->availableGeometry()),
            .safeAreaInsets = {},
            .scale = screen->devicePixelRatio()});
    }
    return screens;
}

void X11Screens::follow(QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &Screens::screensChanged);
    connect(screen, &QScreen::availableGeometryChanged, this, &Screens::screensChanged);
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, &Screens::screensChanged);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Screens::screensChanged);
}

void X11Screens::updateMonitors()
{
    const bool hadMonitors = std::exchange(m_hasMonitors, m_connection->hasMonitors());
    if (hadMonitors != m_hasMonitors)
        Q_EMIT screensChanged();
}

} // namespace moorline

#include "platform/Platform.h"
#include "platform/linux/Heap.h"
#include "platform/linux/desktop/FontsAhead.h"

#include <QGuiApplication>
#include <memory>
#include <unistd.h>
#include <xcb/xcb.h>

namespace moorline {

namespace {

constexpr auto qtPlatform = "QT_QPA_PLATFORM";

bool hasDisplay()
{
    struct Disconnecter {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    const std::unique_ptr<xcb_connection_t, Disconnecter> connection(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(connection.get()) == 0;
}

QList<QByteArray> currentEnvironment()
{
    QList<QByteArray> environment;
    for (char **variable = environ; variable && *variable; ++variable)
        environment.append(QByteArray(*variable));
    return environment;
}

} // namespace

std::optional<Preparation> preparePlatform(DisplayNeed need)
{
    const Preparation preparation{.environment = currentEnvironment()};
    shareHeap();
    // Else Qt loads the desktop's theme plug-in, and with it another toolkit into this process: 130 ms and 3 MB more to
    // start.
    QGuiApplication::setDesktopSettingsAware(false);
    const QByteArray chosen = qgetenv(qtPlatform);
    // Chosen for this program alone, while "wayland" and the like are often set for a whole session.
    if (chosen == "offscreen" || chosen == "minimal" || chosen == "vnc")
        return preparation;
    // Also in a Wayland session with an X server: only there may a program place its own window.
    if (hasDisplay()) {
        readFontsAhead();
        return qputenv(qtPlatform, "xcb") ? std::optional(preparation) : std::nullopt;
    }
    const bool canDo = need == DisplayNeed::optional && qputenv(qtPlatform, "offscreen");
    return canDo ? std::optional(preparation) : std::nullopt;
}

} // namespace moorline

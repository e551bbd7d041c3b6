#pragma once

#include "platform/StatusBar.h"

#include <QDBusServiceWatcher>

namespace moorline {

/// The tray of the session bus, org.kde.StatusNotifierWatcher. Qt asks for it once, when an item is made; a tray that
/// starts later is noticed here. The older way through an X11 selection Qt follows by itself.
class StatusNotifierBar final : public StatusBar {
    Q_OBJECT
public:
    StatusNotifierBar();

private:
    QDBusServiceWatcher m_watcher;
};

} // namespace moorline

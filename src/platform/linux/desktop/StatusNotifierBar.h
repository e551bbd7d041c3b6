#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/desktop/SvgSymbols.h"
#include "platform/qt/QtStatusBar.h"

#include <QDBusServiceWatcher>

namespace moorline {

/// The tray of the session bus, org.kde.StatusNotifierWatcher. Qt asks for it once, when an item is made; a tray that
/// starts later is noticed here. The older way through an X11 selection Qt follows by itself.
class StatusNotifierBar final : public QObject, public StatusBar {
    Q_OBJECT
public:
    StatusNotifierBar();

    void show(StatusBarItem item) override;

Q_SIGNALS:
    /// A tray came, after the start or in place of another.
    void becameAvailable();

private:
    SvgSymbols m_symbols;
    QtStatusBar m_bar{m_symbols};
    QDBusServiceWatcher m_watcher;
};

} // namespace moorline

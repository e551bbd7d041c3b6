#include "platform/linux/desktop/StatusNotifierBar.h"

#include <QDBusConnection>

namespace moorline {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString hostRegistered = QStringLiteral("StatusNotifierHostRegistered");

} // namespace

StatusNotifierBar::StatusNotifierBar()
    : m_watcher(watcherService, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForRegistration)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusNotifierBar::becameAvailable);
    // A watcher without a host shows nothing; the host may follow long after it.
    QDBusConnection::sessionBus().connect(
        watcherService, watcherPath, watcherService, hostRegistered, this, SIGNAL(becameAvailable()));
    connect(this, &StatusNotifierBar::becameAvailable, this, [this] { m_bar.showAgain(); });
}

void StatusNotifierBar::show(StatusBarItem item)
{
    m_bar.show(std::move(item));
}

} // namespace moorline

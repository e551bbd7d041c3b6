#pragma once

#include "platform/Network.h"
#include "support/FileDescriptor.h"

#include <QSocketNotifier>
#include <QString>
#include <memory>

namespace moorline {

/// Where the kernel lists its routes.
struct RouteFiles {
    QString routes = QStringLiteral("/proc/net/route");
    QString ipv6Routes = QStringLiteral("/proc/net/ipv6_route");
};

/// A default route as the way to the internet. The kernel itself tells when its routes change, so this needs no service
/// of the desktop.
class RouteMonitor final : public Network {
    Q_OBJECT
public:
    /// A socket that becomes readable whenever a route or a link changes. None when the kernel grants none.
    [[nodiscard]] static FileDescriptor openRouteSocket();

    /// Without a socket it never signals anything, and takes it that there is a way.
    explicit RouteMonitor(FileDescriptor changes = openRouteSocket(), RouteFiles files = {});

    [[nodiscard]] bool isReachable() const override;
    void listen() override;
    [[nodiscard]] bool takeChanges() override;

private:
    void noteChange();
    /// Whether there was anything.
    [[nodiscard]] bool drain() const;

    FileDescriptor m_changes;
    RouteFiles m_files;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace moorline

#include "platform/linux/network/RouteMonitor.h"

#include "platform/linux/network/DefaultRoutes.h"

#include <QFile>
#include <array>
#include <cerrno>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace moorline {

namespace {

constexpr int mostMessagesAtOnce = 256;

// Thousands of routes; a machine with more is no desktop.
constexpr qint64 mostText = qint64(1024) * 1024;

QByteArray beginningOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(mostText) : QByteArray();
}

} // namespace

FileDescriptor RouteMonitor::openRouteSocket()
{
    FileDescriptor descriptor(socket(AF_NETLINK, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, NETLINK_ROUTE));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    if (descriptor.isOpen() && bind(descriptor.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
        descriptor.close();
    return descriptor;
}

RouteMonitor::RouteMonitor(FileDescriptor changes, RouteFiles files)
    : m_changes(std::move(changes))
    , m_files(std::move(files))
{
    if (!m_changes.isOpen())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_changes.get(), QSocketNotifier::Read);
    m_notifier->setEnabled(false);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &RouteMonitor::noteChange);
}

bool RouteMonitor::isReachable() const
{
    return !m_notifier || hasDefaultRoute(beginningOf(m_files.routes))
        || hasDefaultIPv6Route(beginningOf(m_files.ipv6Routes));
}

void RouteMonitor::listen()
{
    if (m_notifier)
        m_notifier->setEnabled(true);
}

bool RouteMonitor::takeChanges()
{
    return m_changes.isOpen() && drain();
}

void RouteMonitor::noteChange()
{
    m_notifier->setEnabled(false);
    (void)drain();
    Q_EMIT changed();
}

bool RouteMonitor::drain() const
{
    // That there was a message is all that matters; it is cut off at this.
    std::array<char, 64> message{};
    for (int count = 0; count < mostMessagesAtOnce; ++count) {
        const auto length = recv(m_changes.get(), message.data(), message.size(), MSG_DONTWAIT);
        // Any other failure says that messages were lost.
        if (length < 0 && errno == EAGAIN)
            return count > 0;
    }
    return true;
}

} // namespace moorline

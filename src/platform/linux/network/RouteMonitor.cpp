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

// Addresses, routes and name servers follow a link one after the other.
constexpr std::chrono::seconds settlingTime{2};
constexpr std::chrono::seconds longestWait{10};

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

RouteMonitor::RouteMonitor(Clock &clock, FileDescriptor changes, RouteFiles files)
    : m_clock(clock)
    , m_changes(std::move(changes))
    , m_files(std::move(files))
    , m_hadWayOut(hasWayOut())
{
    if (!m_changes.isOpen())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_changes.get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &RouteMonitor::noteChange);
}

bool RouteMonitor::isReachable() const
{
    return !m_notifier || hasWayOut();
}

/// Until things have settled nobody listens, so that a storm of changes wakes nobody up.
void RouteMonitor::noteChange()
{
    m_notifier->setEnabled(false);
    m_firstChange = m_clock.uptime();
    (void)drain();
    // What was asked meanwhile has failed, also when the way is back before everything has settled, as after a sleep.
    m_hadWayOut = m_hadWayOut && hasWayOut();
    settle();
}

void RouteMonitor::settle()
{
    m_settling = m_clock.after(settlingTime, [this] { lookWhenSettled(); });
}

void RouteMonitor::lookWhenSettled()
{
    const bool hasMoreToCome = drain();
    if (hasMoreToCome && m_clock.uptime() - m_firstChange < longestWait)
        return settle();
    m_notifier->setEnabled(true);
    look();
}

void RouteMonitor::look()
{
    const bool hadWayOut = std::exchange(m_hadWayOut, hasWayOut());
    if (m_hadWayOut && !hadWayOut)
        Q_EMIT becameReachable();
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

bool RouteMonitor::hasWayOut() const
{
    return hasDefaultRoute(beginningOf(m_files.routes)) || hasDefaultIPv6Route(beginningOf(m_files.ipv6Routes));
}

} // namespace moorline

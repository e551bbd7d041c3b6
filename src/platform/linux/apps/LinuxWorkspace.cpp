#include "platform/linux/apps/LinuxWorkspace.h"

#include "freedesktop/ForwardPlan.h"
#include "freedesktop/TaskbarRule.h"
#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/PresentTime.h"
#include "platform/linux/apps/WindowRaising.h"
#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/XConnection.h"

#include <algorithm>
#include <utility>

namespace moorline {

namespace {

using Applications = QList<RunningApplication>;

const RunningApplication *find(const Applications &applications, quint64 id)
{
    const auto found =
        std::find_if(applications.cbegin(), applications.cend(), [&](const auto &one) { return one.id == id; });
    return found == applications.cend() ? nullptr : &*found;
}

bool isOneGone(const Applications &before, const Applications &now)
{
    return std::any_of(before.begin(), before.end(), [&](const auto &one) { return !find(now, one.id); });
}

bool isOneNew(const Applications &before, const Applications &now)
{
    return std::any_of(now.begin(), now.end(), [&](const RunningApplication &one) {
        const RunningApplication *same = find(before, one.id);
        return !same || *same != one;
    });
}

} // namespace

LinuxWorkspace::LinuxWorkspace(const Context &context)
    : StarterWorkspace(context.entries, context.starter, context.clock)
    , m_context(context)
    , m_requests(context.connection)
    , m_running(context.clients, context.entries, context.clock)
    , m_quitter({context.connection, context.entries, context.starter, context.sessionBus, context.clock})
{
    connect(&context.connection, &XConnection::propertyChanged, this, &LinuxWorkspace::noteProperty);
    connect(&context.starter, &AppStarter::started, this,
        [this](const QString &path, const QString &, qint64 process) { m_running.noteLaunch(process, path); });
    connect(&context.starter, &AppStarter::ended, this,
        [this](const QString &, qint64 process) { m_running.noteEnd(process); });
    connect(&m_running, &RunningSet::refreshed, this, &LinuxWorkspace::publish);
    connect(&m_running, &RunningSet::activeChanged, this, &LinuxWorkspace::noteActive);
}

void LinuxWorkspace::activate(const RunningApplication &application)
{
    const RunningSet::Member *member = m_running.find(application.id);
    if (!member)
        return;
    const QList<WindowFacts> windows = taskbarWindows(member->application);
    const ClientSnapshot &snapshot = m_context.clients.snapshot();
    const auto plan =
        planForward(windows, m_running.lastActive(), transienceAmong(factsOf(snapshot)), snapshot.currentDesktop);
    if (!plan)
        return;
    const xcb_timestamp_t now = time();
    if (plan->desktop)
        m_requests.switchToDesktop(*plan->desktop, now);
    raiseWithoutFocus(plan->raised, m_context.clients.snapshot(), m_requests);
    m_requests.activate(plan->activated, now);
}

bool LinuxWorkspace::canTerminate(const RunningApplication &application) const
{
    const RunningSet::Member *member = m_running.find(application.id);
    return member && m_quitter.canQuit(member->application);
}

void LinuxWorkspace::terminate(const RunningApplication &application)
{
    if (const RunningSet::Member *member = m_running.find(application.id))
        m_quitter.quit(member->application, time());
}

void LinuxWorkspace::noteProperty(xcb_window_t window, xcb_atom_t name)
{
    if (window == m_context.connection.root() && name == m_context.connection.atom(XAtom::netCurrentDesktop))
        Q_EMIT activeSpaceChanged();
}

void LinuxWorkspace::publish()
{
    const std::optional<Applications> before = std::exchange(m_applications, std::nullopt);
    if (m_running.members()) {
        m_applications.emplace();
        for (const RunningSet::Member &member : *m_running.members())
            m_applications->append(described(member));
    }
    const Applications was = before.value_or(Applications());
    const Applications now = m_applications.value_or(Applications());
    // That the system can tell no more, or can tell again, is news even of no application.
    if (isOneGone(was, now) || (before && !m_applications))
        Q_EMIT applicationTerminated();
    if (isOneNew(was, now) || (m_applications && !before))
        Q_EMIT applicationLaunched();
}

void LinuxWorkspace::noteActive()
{
    const RunningSet::Member *member = m_running.active();
    Q_EMIT applicationActivated(member ? std::optional(described(*member)) : std::nullopt);
}

RunningApplication LinuxWorkspace::described(const RunningSet::Member &member) const
{
    const OpenApplication &application = member.application;
    RunningApplication running{.id = member.id, .process = application.process};
    const EntryCatalogue &catalogue = *m_context.entries.catalogue();
    if (const EntryRecord *record = application.entry ? catalogue.byId(*application.entry) : nullptr) {
        running.bundleIdentifier = catalogue.identifier(*record);
        running.bundlePath = record->path;
    }
    return running;
}

QList<WindowFacts> LinuxWorkspace::taskbarWindows(const OpenApplication &application) const
{
    QList<WindowFacts> windows = factsOf(m_context.clients.snapshot());
    windows.removeIf([&](const WindowFacts &one) { return !application.taskbarWindows.contains(one.window); });
    return windows;
}

xcb_timestamp_t LinuxWorkspace::time() const
{
    return presentTime(m_context.userTime, m_context.connection);
}

} // namespace moorline

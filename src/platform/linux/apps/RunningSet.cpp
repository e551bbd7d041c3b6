#include "platform/linux/apps/RunningSet.h"

#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/x11/ClientWindows.h"

#include <algorithm>
#include <utility>

namespace moorline {

namespace {

WindowFacts factsOf(const ClientWindow &window)
{
    return {.window = window.window,
        .instanceName = window.windowInstance,
        .className = window.windowClass,
        .applicationId = window.applicationId,
        .process = window.localProcess,
        .isOrdinary = window.kind == WindowKind::normal || window.kind == WindowKind::dialog,
        .skipsTaskbar = window.skipsTaskbar,
        .transientFor = window.transientFor,
        .desktop = window.desktop,
        .isMinimised = window.isHidden};
}

QList<WindowFacts> inMappingOrder(QList<WindowFacts> windows, const QList<XWindowId> &order)
{
    QHash<XWindowId, qsizetype> places;
    for (qsizetype place = 0; place < order.size(); ++place)
        places.insert(order[place], place);
    std::stable_sort(windows.begin(), windows.end(), [&](const WindowFacts &one, const WindowFacts &other) {
        return places.value(one.window) < places.value(other.window);
    });
    return windows;
}

} // namespace

QList<WindowFacts> factsOf(const ClientSnapshot &snapshot)
{
    QList<WindowFacts> facts;
    for (const ClientWindow &window : snapshot.windows) {
        if (window.isManaged)
            facts.append(factsOf(window));
    }
    return facts;
}

RunningSet::RunningSet(ClientWindows &clients, DesktopEntries &entries, Clock &clock)
    : m_clients(clients)
    , m_entries(entries)
    , m_clock(clock)
{
    connect(&clients, &ClientWindows::factsChanged, this, &RunningSet::scheduleRefresh);
    connect(&m_processes, &ProcessBook::processRead, this, [this](qint64 process) {
        m_identities.forget(process);
        scheduleRefresh();
    });
    connect(&entries, &AppBundles::changed, this, [this] {
        m_identities.setMatcher(m_entries.matcher());
        scheduleRefresh();
    });
    entries.whenLoaded([this] {
        m_isLoaded = true;
        m_identities.setMatcher(m_entries.matcher());
        refresh();
    });
}

const RunningSet::Member *RunningSet::find(quint64 id) const
{
    if (!m_members)
        return nullptr;
    const auto found =
        std::find_if(m_members->cbegin(), m_members->cend(), [&](const Member &member) { return member.id == id; });
    return found == m_members->cend() ? nullptr : &*found;
}

const RunningSet::Member *RunningSet::active() const
{
    return find(m_activeMember);
}

void RunningSet::scheduleRefresh()
{
    if (!m_settling && m_isLoaded)
        m_settling = m_clock.after(settlingTime, [this] { refresh(); });
}

void RunningSet::refresh()
{
    m_settling.reset();
    const ClientSnapshot &snapshot = m_clients.snapshot();
    m_members.reset();
    if (snapshot.hasWindowManager()) {
        const auto windows = identified(inMappingOrder(factsOf(snapshot), snapshot.mappingOrder));
        m_hasBegun = m_hasBegun || !m_newWindows.deadline();
        // Whoever was there before did not come now.
        if (!m_hasBegun)
            return;
        m_members = membersAmong(windows);
    }
    Q_EMIT refreshed();
    noteActive(snapshot);
}

QList<WindowFacts> RunningSet::identified(const QList<WindowFacts> &windows)
{
    QSet<qint64> processes;
    for (const WindowFacts &window : windows) {
        if (window.process)
            processes.insert(*window.process);
    }
    m_processes.keepOnly(processes);
    m_entryOf = m_identities.identify(windows, [this](qint64 process) { return m_processes.find(process); });
    QList<WindowFacts> known = m_newWindows.presentable(windows, m_identities.undecided(), m_clock.uptime());
    m_patience.reset();
    if (const auto deadline = m_newWindows.deadline())
        m_patience = m_clock.after(*deadline - m_clock.uptime(), [this] { refresh(); });
    return known;
}

QList<RunningSet::Member> RunningSet::membersAmong(const QList<WindowFacts> &windows)
{
    const QHash<QString, quint64> known = std::exchange(m_ids, {});
    QList<Member> members;
    const QList<OpenApplication> applications = openApplications(windows, m_entryOf);
    for (const OpenApplication &application : applications) {
        if (!application.taskbarWindows.isEmpty())
            members.append({.id = idOf(application.key, known), .application = application});
    }
    return members;
}

quint64 RunningSet::idOf(const QString &key, const QHash<QString, quint64> &known)
{
    const auto found = known.constFind(key);
    const quint64 id = found == known.constEnd() ? ++m_lastId : *found;
    m_ids.insert(key, id);
    return id;
}

void RunningSet::noteActive(const ClientSnapshot &snapshot)
{
    const XWindowId window = snapshot.activeWindow;
    quint64 member = 0;
    for (const Member &one : m_members.value_or(QList<Member>())) {
        if (one.application.windows.contains(window))
            member = one.id;
    }
    m_lastActive.removeIf([&](XWindowId one) { return !snapshot.mappingOrder.contains(one); });
    // Whosever it is: that may become known later.
    if (snapshot.mappingOrder.contains(window)) {
        m_lastActive.removeOne(window);
        m_lastActive.prepend(window);
    }
    const bool isAnother = std::exchange(m_active, window) != window;
    const bool isAnothers = std::exchange(m_activeMember, member) != member;
    // Who was in front when this began did not come there now.
    if (std::exchange(m_knowsActive, true) && (isAnother || isAnothers))
        Q_EMIT activeChanged();
}

} // namespace moorline

#include "apps/RecentAppsService.h"

#include "apps/AppIdentity.h"
#include "apps/AppLauncher.h"
#include "apps/SteadyRunningSet.h"
#include "platform/AppBundles.h"
#include "platform/Files.h"
#include "platform/UserDefaults.h"
#include "settings/SettingsStore.h"

#include <QSet>

namespace moorline {

namespace {

const QString defaultsKey = QStringLiteral("recentAppOrder");

bool isEligible(const RunningApplication &application)
{
    return application.activationPolicy == ActivationPolicy::regular
        && application.bundleIdentifier != applicationIdentifier && !application.isTerminated;
}

QStringList storedOrder(const UserDefaults &defaults)
{
    QStringList order = defaults.stringList(defaultsKey);
    order.removeAll(QString(applicationIdentifier));
    order.removeDuplicates();
    return order;
}

/// Those of applications that go by another one today among them.
QSet<QString> pinnedIdentifiers(const QList<AppShortcut> &shortcuts, const AppBundles &bundles)
{
    QSet<QString> identifiers;
    for (const AppShortcut &shortcut : shortcuts) {
        const QStringList known = identityOf(shortcut, bundles).identifiers;
        if (shortcut.bundleIdentifier)
            identifiers.unite({known.begin(), known.end()});
    }
    return identifiers;
}

} // namespace

RecentAppsService::RecentAppsService(Context context)
    : m_context(context)
    , m_order(storedOrder(context.defaults))
{
}

void RecentAppsService::start()
{
    m_context.running.refresh();
    runningChanged();
    connect(&m_context.workspace, &Workspace::applicationActivated, this, &RecentAppsService::applicationActivated);
    connect(&m_context.workspace, &Workspace::applicationTerminated, this, &RecentAppsService::rebuild);
    connect(&m_context.running, &SteadyRunningSet::changed, this, &RecentAppsService::runningChanged);
    connect(&m_context.bundles, &AppBundles::changed, this, &RecentAppsService::bundlesChanged);
    connect(&m_context.store, &SettingsStore::settingsDidChange, this, &RecentAppsService::rebuild);
}

void RecentAppsService::runningChanged()
{
    seedFromRunningApps();
    rebuild();
}

/// Once, so that a fresh install shows something; where the system cannot tell yet, as soon as it can.
void RecentAppsService::seedFromRunningApps()
{
    if (m_isSeeded || !m_context.running.isKnown())
        return;
    m_isSeeded = true;
    for (const RunningApplication &application : m_context.running.applications()) {
        const auto &identifier = application.bundleIdentifier;
        if (identifier && isEligible(application) && !m_order.contains(*identifier))
            m_order.append(*identifier);
    }
}

void RecentAppsService::applicationActivated(const std::optional<RunningApplication> &application)
{
    if (!application)
        return;
    if (m_context.workspace.activatesInPassing())
        m_resting = m_context.clock.after(restingTime, [this, seen = *application] { recordActivation(seen); });
    else
        recordActivation(*application);
}

void RecentAppsService::recordActivation(const RunningApplication &application)
{
    if (!isEligible(application) || !application.bundleIdentifier)
        return;
    m_order.removeAll(*application.bundleIdentifier);
    m_order.prepend(*application.bundleIdentifier);
    m_order = m_order.mid(0, rememberedCount);
    m_context.defaults.setStringList(defaultsKey, m_order);
    // One that comes to the front at once may not be among those that run yet.
    m_context.running.refresh();
    rebuild();
}

/// What was found once may stand somewhere else now.
void RecentAppsService::bundlesChanged()
{
    m_pathByBundleID.clear();
    rebuild();
}

void RecentAppsService::rebuild()
{
    QList<AppShortcut> shortcuts = recentShortcuts();
    if (shortcuts == m_recent)
        return;
    m_recent = std::move(shortcuts);
    Q_EMIT recentChanged();
}

QList<AppShortcut> RecentAppsService::recentShortcuts()
{
    const Settings &settings = m_context.store.settings();
    const bool includeClosedApps = settings.recentAppsMode == RecentAppsMode::anyState;
    const QSet<QString> hidden = settings.hideRecentAppsAlreadyPinned
        ? pinnedIdentifiers(settings.appShortcuts, m_context.bundles)
        : QSet<QString>();
    const auto running = eligibleByIdentifier();
    QList<AppShortcut> shortcuts;
    for (const QString &identifier : std::as_const(m_order)) {
        if (shortcuts.size() >= settings.recentAppCount)
            break;
        if (hidden.contains(identifier))
            continue;
        const auto found = running.constFind(identifier);
        const auto path =
            appPath(identifier, found == running.constEnd() ? std::nullopt : std::optional(*found), includeClosedApps);
        const auto shortcut = path ? m_context.launcher.makeShortcut(QUrl::fromLocalFile(*path)) : std::nullopt;
        if (shortcut)
            shortcuts.append(*shortcut);
    }
    return shortcuts;
}

QHash<QString, RunningApplication> RecentAppsService::eligibleByIdentifier() const
{
    QHash<QString, RunningApplication> eligible;
    for (const RunningApplication &application : m_context.running.applications()) {
        if (application.bundleIdentifier && isEligible(application)
            && !eligible.contains(*application.bundleIdentifier))
            eligible.insert(*application.bundleIdentifier, application);
    }
    return eligible;
}

std::optional<QString> RecentAppsService::appPath(
    const QString &identifier, const std::optional<RunningApplication> &running, bool includeClosedApps)
{
    if (running && running->bundlePath)
        return running->bundlePath;
    if (!includeClosedApps)
        return std::nullopt;
    const auto cached = m_pathByBundleID.constFind(identifier);
    if (cached != m_pathByBundleID.constEnd()) {
        if (m_context.files.exists(*cached))
            return *cached;
        m_pathByBundleID.erase(cached);
    }
    auto path = m_context.workspace.applicationPath(identifier);
    if (path)
        m_pathByBundleID.insert(identifier, *path);
    return path;
}

} // namespace moorline

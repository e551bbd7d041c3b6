#pragma once

#include "platform/Clock.h"
#include "platform/Workspace.h"
#include "settings/Settings.h"

#include <QHash>

namespace moorline {

class AppBundles;
class AppLauncher;
class Files;
class SettingsStore;
class SteadyRunningSet;
class UserDefaults;

/// Keeps the order in which the user brought applications to the front, and publishes those of them to show.
class RecentAppsService final : public QObject {
    Q_OBJECT
public:
    /// What the service is built on. Everything lent here outlives it.
    struct Context {
        const SettingsStore &store;
        const AppLauncher &launcher;
        SteadyRunningSet &running;
        const Workspace &workspace;
        const AppBundles &bundles;
        const Files &files;
        UserDefaults &defaults;
        Clock &clock;
    };

    /// How many applications are remembered.
    static constexpr qsizetype rememberedCount = 40;
    /// How long an application has to stay in front where it may have come there in passing.
    static constexpr std::chrono::milliseconds restingTime{500};

    explicit RecentAppsService(Context context);

    void start();

    /// The most recent first.
    [[nodiscard]] const QList<AppShortcut> &recent() const { return m_recent; }

Q_SIGNALS:
    void recentChanged();

private:
    void runningChanged();
    void applicationActivated(const std::optional<RunningApplication> &application);
    void recordActivation(const RunningApplication &application);
    void bundlesChanged();
    void seedFromRunningApps();
    void rebuild();
    [[nodiscard]] QList<AppShortcut> recentShortcuts();
    [[nodiscard]] QHash<QString, RunningApplication> eligibleByIdentifier() const;
    [[nodiscard]] std::optional<QString> appPath(
        const QString &identifier, const std::optional<RunningApplication> &running, bool includeClosedApps);

    Context m_context;
    /// Bundle identifiers, the most recently activated first.
    QStringList m_order;
    bool m_isSeeded = false;
    QList<AppShortcut> m_recent;
    QHash<QString, QString> m_pathByBundleID;
    std::unique_ptr<Clock::Timer> m_resting;
};

} // namespace moorline

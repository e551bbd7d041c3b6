#pragma once

#include "apps/Launching.h"
#include "apps/RecentAppsService.h"
#include "apps/SteadyRunningSet.h"
#include "fakes/SettingsGround.h"

namespace moorline::test {

inline const QString orderKey = QStringLiteral("recentAppOrder");
inline const QString ownIdentifier = QStringLiteral("app.moorline.Moorline");

inline QString path(const QString &identifier)
{
    return QStringLiteral("/Applications/%1.app").arg(identifier);
}

/// A service with room for ten, nothing pinned.
struct Recents : Launching {
    explicit Recents(const QStringList &order = {})
    {
        defaults.lists[orderKey] = order;
        service = std::make_unique<RecentAppsService>(RecentAppsService::Context{.store = store,
            .launcher = launcher,
            .running = running,
            .workspace = workspace,
            .bundles = bundles,
            .files = ground.files,
            .defaults = defaults,
            .clock = clock});
        change([](Settings &settings) {
            settings.recentAppCount = 10;
            settings.appShortcuts.clear();
        });
    }

    void change(const std::function<void(Settings &)> &edit) { store.change(edit); }
    void install(const QString &identifier)
    {
        bundles.bundles[path(identifier)] = {identifier, std::nullopt, std::nullopt};
        workspace.installed[identifier] = path(identifier);
    }
    RunningApplication run(const QString &identifier)
    {
        install(identifier);
        return workspace.launch(identifier, path(identifier));
    }
    void use(const QString &identifier) { workspace.bringForward(run(identifier)); }
    void showClosed()
    {
        change([](Settings &settings) { settings.recentAppsMode = RecentAppsMode::anyState; });
    }
    [[nodiscard]] QStringList recent() const
    {
        QStringList identifiers;
        for (const AppShortcut &shortcut : service->recent())
            identifiers.append(shortcut.bundleIdentifier.value_or(shortcut.path));
        return identifiers;
    }
    [[nodiscard]] QStringList stored() const { return defaults.lists.value(orderKey); }

    SettingsGround ground;
    SettingsStore store{ground.context(clock)};
    FakeUserDefaults defaults;
    SteadyRunningSet running{workspace, clock};
    std::unique_ptr<RecentAppsService> service;
};

inline const QString a = QStringLiteral("a");
inline const QString b = QStringLiteral("b");
inline const QString c = QStringLiteral("c");

} // namespace moorline::test

#pragma once

#include "MenuLines.h"
#include "TrialItem.h"
#include "apps/AppBadgeService.h"
#include "apps/AppLauncher.h"
#include "apps/AppShortcutButton.h"
#include "apps/RunningAppsService.h"
#include "apps/SteadyRunningSet.h"
#include "chrome/BarStage.h"
#include "fakes/FakePlatform.h"
#include "fakes/SettingsGround.h"
#include "theme/IconCache.h"
#include "theme/Symbols.h"

#include <QMimeData>

namespace moorline::test {

/// What the icons of applications stand on: three applications that are installed, and a store that pins none.
struct IconsFixture {
    IconsFixture()
    {
        for (const AppShortcut &one : {notes, mail, finder})
            install(one);
        platform.panelWindow.frames = {QRectF(420, 0, 600, 98)};
        store.change([](Settings &settings) {
            settings.appShortcuts.clear();
            settings.showAppBadges = true;
        });
        runningApps.start();
        badges.start();
    }

    void install(const AppShortcut &shortcut, bool takesFiles = true)
    {
        platform.appBundles.bundles[shortcut.path] = {
            .identifier = shortcut.bundleIdentifier, .displayName = shortcut.name, .takesFiles = takesFiles};
    }

    void pin(const QList<AppShortcut> &shortcuts)
    {
        store.change([&](Settings &settings) { settings.appShortcuts = shortcuts; });
    }

    void run(const AppShortcut &shortcut)
    {
        platform.workspace.launch(shortcut.bundleIdentifier.value_or(QString()), shortcut.path);
    }
    void end(const AppShortcut &shortcut)
    {
        platform.workspace.end(*shortcut.bundleIdentifier);
        // What runs without a window for a moment still runs.
        platform.clock.advance(std::chrono::seconds(10));
    }

    /// What the applications want on their icons from now on.
    void setBadges(const QList<BadgeTile> &tiles)
    {
        while (platform.badgeSource.answer(tiles)) { }
        platform.clock.advance(std::chrono::seconds(2));
        while (platform.badgeSource.answer(tiles)) { }
    }

    [[nodiscard]] AppShortcutButton::Context context()
    {
        return {.store = store,
            .launcher = launcher,
            .bundles = platform.appBundles,
            .running = runningApps,
            .badges = badges,
            .icons = icons,
            .stage = stage,
            .clock = platform.clock,
            .pointer = platform.pointer,
            .panelFrame = [this] { return std::optional(platform.panelWindow.frame()); }};
    }

    const AppShortcut notes{
        QStringLiteral("/Applications/Notes.app"), QStringLiteral("org.example.notes"), QStringLiteral("Notes")};
    const AppShortcut mail{
        QStringLiteral("/Applications/Mail.app"), QStringLiteral("org.example.mail"), QStringLiteral("Mail")};
    const AppShortcut finder{QStringLiteral("/System/Library/CoreServices/Finder.app"),
        QStringLiteral("com.apple.finder"), QStringLiteral("Finder")};

    FakePlatform platform;
    SettingsStore store{storeContext(platform)};
    AppLauncher launcher{{.bundles = platform.appBundles,
        .workspace = platform.workspace,
        .fileManager = platform.fileManager,
        .clock = platform.clock,
        .steadilyRunning = [this] { return running.applications(); }}};
    SteadyRunningSet running{platform.workspace, platform.clock};
    RunningAppsService runningApps{running, platform.clock};
    AppBadgeService badges{
        {.store = store, .clock = platform.clock, .source = platform.badgeSource, .bundles = platform.appBundles}};
    IconCache icons{platform.icons};
    Symbols symbols{platform.symbolCatalogue};
    BarHolds holds;
    BarStage stage{{.windows = platform.popupWindows,
        .screens = platform.screens,
        .panel = platform.panelWindow,
        .pointer = platform.pointer,
        .clock = platform.clock,
        .symbols = symbols,
        .holds = holds}};
};

} // namespace moorline::test

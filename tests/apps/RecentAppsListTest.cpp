#include "apps/Recents.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class RecentAppsListTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatQuitLeavesTheRunningOnes()
    {
        Recents recents;
        recents.service->start();
        recents.use(a);
        recents.use(b);
        recents.workspace.end(b);
        QCOMPARE(recents.recent(), QStringList{a});
        QCOMPARE(recents.stored(), (QStringList{b, a}));
    }

    void whatQuitStaysInAnyState()
    {
        Recents recents;
        recents.showClosed();
        recents.service->start();
        recents.use(a);
        recents.use(b);
        recents.workspace.end(b);
        QCOMPARE(recents.recent(), (QStringList{b, a}));
    }

    void whatIsPinnedIsSkippedAndTheNextTakesItsPlace()
    {
        Recents recents;
        recents.service->start();
        for (const QString &identifier : {c, b, a})
            recents.use(identifier);
        recents.change([](Settings &settings) {
            settings.recentAppCount = 2;
            settings.appShortcuts = {{path(a), a, a}, {path(c), std::nullopt, c}};
        });
        QCOMPARE(recents.recent(), (QStringList{b, c}));
        recents.change([](Settings &settings) { settings.hideRecentAppsAlreadyPinned = false; });
        QCOMPARE(recents.recent(), (QStringList{a, b}));
    }

    void whatIsPinnedUnderAnEarlierIdentifierIsSkippedToo()
    {
        Recents recents;
        recents.service->start();
        recents.use(a);
        recents.bundles.places[QStringLiteral("before")] = path(a);
        recents.change([](Settings &settings) { settings.appShortcuts = {{path(b), QStringLiteral("before"), a}}; });
        QVERIFY(recents.recent().isEmpty());
    }

    void theCountIsThatOfTheSettings()
    {
        Recents recents;
        recents.service->start();
        for (const QString &identifier : {c, b, a})
            recents.use(identifier);
        for (const qint64 count : {3, 2, 0, -1}) {
            recents.change([count](Settings &settings) { settings.recentAppCount = count; });
            QCOMPARE(recents.recent().size(), std::max(qint64(0), count));
        }
    }

    void whatRunsIsWhereItRuns()
    {
        Recents recents;
        recents.service->start();
        recents.install(a);
        const QString other = QStringLiteral("/Volumes/Disk/a.app");
        recents.bundles.bundles[other] = {a, QStringLiteral("Other"), std::nullopt};
        recents.workspace.bringForward(recents.workspace.launch(a, other));
        QCOMPARE(recents.service->recent(), (QList<AppShortcut>{{other, a, QStringLiteral("Other")}}));
        QVERIFY(recents.workspace.pathsAsked.isEmpty());
    }

    void whatRunsWithoutABundleIsLookedForInAnyStateOnly()
    {
        Recents recents({a});
        recents.install(a);
        recents.workspace.running->append({.id = 1, .bundleIdentifier = a});
        recents.service->start();
        QVERIFY(recents.recent().isEmpty());
        recents.showClosed();
        QCOMPARE(recents.recent(), QStringList{a});
    }

    void aClosedApplicationIsLookedForOnce()
    {
        Recents recents({a, b});
        recents.install(a);
        recents.install(b);
        recents.showClosed();
        recents.service->start();
        for (int round = 0; round < 3; ++round)
            recents.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
        QCOMPARE(recents.workspace.pathsAsked, (QStringList{a, b}));
    }

    void aDeletedApplicationDisappearsAndMayReturn()
    {
        Recents recents({a, b});
        recents.install(a);
        recents.install(b);
        recents.showClosed();
        recents.service->start();
        recents.ground.files.missing.insert(path(a));
        recents.workspace.installed.remove(a);
        Q_EMIT recents.workspace.applicationTerminated();
        QCOMPARE(recents.recent(), QStringList{b});
        recents.workspace.installed[a] = path(a);
        Q_EMIT recents.workspace.applicationTerminated();
        QCOMPARE(recents.recent(), (QStringList{a, b}));
        recents.use(b);
        QCOMPARE(recents.stored(), (QStringList{b, a}));
    }

    void whatIsInstalledAnewIsLookedForAnew()
    {
        Recents recents({a});
        recents.install(a);
        recents.showClosed();
        recents.service->start();
        const QString better = QStringLiteral("/home/me/Applications/a.app");
        recents.bundles.bundles[better] = {a, std::nullopt, std::nullopt};
        recents.workspace.installed[a] = better;
        recents.bundles.change();
        QCOMPARE(recents.service->recent().first().path, better);
    }

    void whatGivesNoShortcutIsSkipped()
    {
        Recents recents({a, b});
        recents.install(b);
        recents.workspace.installed[a] = QStringLiteral("/Applications/a.txt");
        recents.showClosed();
        recents.change([](Settings &settings) { settings.recentAppCount = 1; });
        recents.service->start();
        QCOMPARE(recents.recent(), QStringList{b});
    }

    void onlyChangesArePublished()
    {
        Recents recents;
        recents.service->start();
        const QSignalSpy changes(recents.service.get(), &RecentAppsService::recentChanged);
        recents.use(a);
        QCOMPARE(changes.count(), 1);
        recents.workspace.bringForward(recents.workspace.running->first());
        recents.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
        Q_EMIT recents.workspace.applicationTerminated();
        recents.clock.advance(60s);
        QCOMPARE(changes.count(), 1);
        // The same application under another name.
        recents.bundles.bundles[path(a)].displayName = QStringLiteral("Renamed");
        recents.bundles.change();
        QCOMPARE(changes.count(), 2);
    }

    void whileNoWindowManagerRunsTheListStands()
    {
        Recents recents;
        recents.service->start();
        recents.use(a);
        recents.workspace.running = std::nullopt;
        Q_EMIT recents.workspace.applicationTerminated();
        recents.clock.advance(4999ms);
        QCOMPARE(recents.recent(), QStringList{a});
        recents.clock.advance(1ms);
        QVERIFY(recents.recent().isEmpty());
    }
};

MOORLINE_TEST(RecentAppsListTest);
#include "RecentAppsListTest.moc"

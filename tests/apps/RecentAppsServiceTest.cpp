#include "apps/Recents.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class RecentAppsServiceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFreshStartShowsWhatRuns()
    {
        Recents recents;
        recents.run(b);
        recents.run(a);
        recents.run(ownIdentifier);
        recents.service->start();
        QCOMPARE(recents.recent(), (QStringList{b, a}));
        QCOMPARE(recents.defaults.timesWritten, 0);
    }

    void whatRunsIsSeededBehindWhatIsRemembered()
    {
        Recents recents({c, a});
        for (const QString &identifier : {a, b, c})
            recents.run(identifier);
        recents.service->start();
        QCOMPARE(recents.recent(), (QStringList{c, a, b}));
    }

    void seedingKnowsNoLimit()
    {
        Recents recents;
        recents.change([](Settings &settings) { settings.recentAppCount = 100; });
        for (int number = 0; number < 45; ++number)
            recents.run(QStringLiteral("app%1").arg(number));
        recents.service->start();
        QCOMPARE(recents.recent().size(), 45);
    }

    void seedingWaitsUntilTheSystemCanTell()
    {
        Recents recents;
        recents.workspace.running = std::nullopt;
        recents.service->start();
        QVERIFY(recents.recent().isEmpty());
        recents.workspace.running = QList<RunningApplication>();
        recents.install(b);
        recents.workspace.running->append({.id = 1, .bundleIdentifier = b, .bundlePath = path(b)});
        recents.run(a);
        QCOMPARE(recents.recent(), (QStringList{b, a}));
        // Later ones have to come to the front first.
        recents.run(c);
        QCOMPARE(recents.recent(), (QStringList{b, a}));
    }

    void whatStartsLaterHasToComeToTheFront()
    {
        Recents recents;
        recents.service->start();
        recents.run(a);
        recents.use(b);
        QCOMPARE(recents.recent(), QStringList{b});
    }

    void theLastUsedComesFirst()
    {
        Recents recents;
        recents.service->start();
        recents.use(a);
        recents.use(b);
        QCOMPARE(recents.recent(), (QStringList{b, a}));
        QCOMPARE(recents.stored(), (QStringList{b, a}));
    }

    void whatIsUsedAgainMovesToTheFront()
    {
        Recents recents;
        recents.service->start();
        for (const QString &identifier : {a, b, c, a})
            recents.use(identifier);
        QCOMPARE(recents.stored(), (QStringList{a, c, b}));
    }

    void whatComesForwardBeforeItIsKnownToRunIsShown()
    {
        Recents recents;
        recents.service->start();
        recents.install(a);
        recents.workspace.running->append({.id = 1, .bundleIdentifier = a, .bundlePath = path(a)});
        recents.workspace.bringForward(recents.workspace.running->first());
        QCOMPARE(recents.recent(), QStringList{a});
    }

    void theOrderOutlivesARestart()
    {
        Recents recents({a, b});
        recents.run(b);
        recents.run(a);
        recents.service->start();
        QCOMPARE(recents.recent(), (QStringList{a, b}));
    }

    void theFortyFirstPushesTheOldestOut()
    {
        Recents recents;
        recents.change([](Settings &settings) { settings.recentAppCount = 100; });
        recents.service->start();
        for (int number = 1; number <= 40; ++number)
            recents.use(QString::number(number));
        QCOMPARE(recents.stored().last(), QStringLiteral("1"));
        recents.use(QStringLiteral("41"));
        QCOMPARE(recents.stored().size(), 40);
        QCOMPARE(recents.stored().first(), QStringLiteral("41"));
        QCOMPARE(recents.stored().last(), QStringLiteral("2"));
        QCOMPARE(recents.recent().size(), 40);
    }

    void whoIsNotForTheListIsIgnored_data()
    {
        QTest::addColumn<std::optional<RunningApplication>>("application");
        using Application = std::optional<RunningApplication>;
        QTest::newRow("nobody") << Application();
        QTest::newRow("this application")
            << Application({.id = 90, .bundleIdentifier = ownIdentifier, .bundlePath = path(ownIdentifier)});
        QTest::newRow("accessory") << Application(
            {.id = 90, .bundleIdentifier = b, .activationPolicy = ActivationPolicy::accessory});
        QTest::newRow("prohibited") << Application(
            {.id = 90, .bundleIdentifier = b, .activationPolicy = ActivationPolicy::prohibited});
        QTest::newRow("terminated") << Application({.id = 90, .bundleIdentifier = b, .isTerminated = true});
        QTest::newRow("without identifier") << Application({.id = 90, .bundlePath = path(b)});
    }

    void whoIsNotForTheListIsIgnored()
    {
        QFETCH(std::optional<RunningApplication>, application);
        Recents recents;
        recents.install(b);
        recents.install(ownIdentifier);
        recents.showClosed();
        recents.service->start();
        recents.use(a);
        recents.workspace.bringForward(application);
        QCOMPARE(recents.stored(), QStringList{a});
        QCOMPARE(recents.defaults.timesWritten, 1);
        QCOMPARE(recents.recent(), QStringList{a});
    }

    void whatIsStoredNeverBringsThisApplicationOrOneTwice()
    {
        Recents recents({a, ownIdentifier, b, a});
        for (const QString &identifier : {a, b, ownIdentifier})
            recents.install(identifier);
        recents.showClosed();
        recents.service->start();
        QCOMPARE(recents.recent(), (QStringList{a, b}));
    }

    void whereFocusComesInPassingAnApplicationHasToRest()
    {
        Recents recents;
        recents.service->start();
        recents.workspace.isFocusSloppy = true;
        recents.use(a);
        recents.clock.advance(499ms);
        QVERIFY(recents.stored().isEmpty());
        recents.clock.advance(1ms);
        QCOMPARE(recents.stored(), QStringList{a});
    }

    void whatIsPassedOverDoesNotCount()
    {
        Recents recents;
        recents.service->start();
        recents.workspace.isFocusSloppy = true;
        recents.use(a);
        recents.clock.advance(400ms);
        recents.use(b);
        recents.clock.advance(400ms);
        QVERIFY(recents.stored().isEmpty());
        recents.clock.advance(100ms);
        QCOMPARE(recents.stored(), QStringList{b});
    }

    void noWindowDoesNotDisturbTheRest()
    {
        Recents recents;
        recents.service->start();
        recents.workspace.isFocusSloppy = true;
        recents.use(a);
        recents.workspace.bringForward(std::nullopt);
        recents.clock.advance(500ms);
        QCOMPARE(recents.stored(), QStringList{a});
    }
};

MOORLINE_TEST(RecentAppsServiceTest);
#include "RecentAppsServiceTest.moc"

#include "apps/AppBadgeService.h"

#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"
#include "fakes/SettingsGround.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

using Badges = QHash<QString, QString>;

const QString mail = QStringLiteral("org.example.mail");
const BadgeTile mailTile{QStringLiteral("/Applications/Mail.app"), QStringLiteral("3")};
const Badges mailBadges{{mail, QStringLiteral("3")}};

/// A service that was started, with badges on or off.
struct Badging {
    explicit Badging(bool isOn = true)
    {
        bundles.bundles[mailTile.path] = {mail, std::nullopt, std::nullopt};
        show(isOn);
        service->start();
    }

    void show(bool isOn)
    {
        store.change([isOn](Settings &settings) { settings.showAppBadges = isOn; });
    }

    FakeClock clock;
    SettingsGround ground;
    SettingsStore store{ground.context(clock)};
    FakeBadgeSource source;
    FakeAppBundles bundles;
    std::unique_ptr<AppBadgeService> service = std::make_unique<AppBadgeService>(
        AppBadgeService::Context{.store = store, .clock = clock, .source = source, .bundles = bundles});
    QSignalSpy changes{service.get(), &AppBadgeService::badgesChanged};
};

} // namespace

class AppBadgeServiceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void offItDoesNothing()
    {
        Badging badging(false);
        badging.clock.advance(60s);
        badging.source.change();
        QCOMPARE(badging.source.looks(), 0);
        QVERIFY(!badging.source.isActive);
        QCOMPARE(badging.clock.repeatingIntervals(), QList<std::chrono::milliseconds>());
    }

    void onItLooksAtOnceAndEveryTwoSeconds()
    {
        Badging badging;
        QVERIFY(badging.source.isActive);
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.service->badges(), mailBadges);
        QCOMPARE(badging.service->badge(mail), std::optional(QStringLiteral("3")));
        QCOMPARE(badging.service->badge(QStringLiteral("org.example.notes")), std::optional<QString>());
        QCOMPARE(badging.service->badge(std::nullopt), std::optional<QString>());
        badging.clock.advance(1999ms);
        QCOMPARE(badging.source.looks(), 0);
        badging.clock.advance(1ms);
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({}));
        QVERIFY(badging.service->badges().isEmpty());
    }

    void otherSettingsDoNotDisturb()
    {
        Badging badging;
        QVERIFY(badging.source.answer({mailTile}));
        badging.clock.advance(1s);
        badging.store.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
        QCOMPARE(badging.source.looks(), 0);
        badging.clock.advance(1s);
        QCOMPARE(badging.source.looks(), 1);
    }

    void turningOffClearsAtOnce()
    {
        Badging badging;
        QVERIFY(badging.source.answer({mailTile}));
        badging.show(false);
        QVERIFY(badging.service->badges().isEmpty());
        QCOMPARE(badging.changes.count(), 2);
        QVERIFY(!badging.source.isActive);
        QCOMPARE(badging.clock.repeatingIntervals(), QList<std::chrono::milliseconds>());
    }

    void whatIsFoundAfterTurningOffIsThrownAway()
    {
        Badging badging;
        QVERIFY(badging.source.answer({mailTile}));
        badging.clock.advance(2s);
        badging.show(false);
        QVERIFY(badging.source.answer({mailTile}));
        QVERIFY(badging.service->badges().isEmpty());
        QCOMPARE(badging.changes.count(), 2);
        QCOMPARE(badging.source.looks(), 0);
    }

    void turnedOnAgainItLooksAsSoonAsTheLastLookHasEnded()
    {
        Badging badging;
        badging.show(false);
        badging.show(true);
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({}));
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.service->badges(), mailBadges);
        QCOMPARE(badging.source.looks(), 0);
    }

    void withoutPermissionItWaits()
    {
        Badging badging(false);
        badging.source.isAllowed = false;
        badging.show(true);
        badging.clock.advance(10s);
        QCOMPARE(badging.source.looks(), 0);
        badging.source.isAllowed = true;
        badging.clock.advance(2s);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.service->badges(), mailBadges);
    }

    void permissionThatIsTakenAwayClearsOnTheNextTick()
    {
        Badging badging;
        QVERIFY(badging.source.answer({mailTile}));
        badging.source.isAllowed = false;
        badging.clock.advance(1999ms);
        QCOMPARE(badging.service->badges(), mailBadges);
        badging.clock.advance(1ms);
        QVERIFY(badging.service->badges().isEmpty());
        badging.clock.advance(10s);
        QCOMPARE(badging.changes.count(), 2);
    }

    void whatIsFoundWithoutPermissionIsNotShown()
    {
        Badging badging;
        badging.source.isAllowed = false;
        badging.clock.advance(2s);
        QVERIFY(badging.source.answer({mailTile}));
        QVERIFY(badging.service->badges().isEmpty());
    }

    void aSlowLookIsNotJoinedByOthers()
    {
        Badging badging;
        badging.clock.advance(10s);
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({mailTile}));
        // Nor followed at once by those that were left out.
        QCOMPARE(badging.source.looks(), 0);
        badging.clock.advance(2s);
        QCOMPARE(badging.source.looks(), 1);
    }

    void aChangeIsLookedAtAtOnce()
    {
        Badging badging;
        QVERIFY(badging.source.answer({}));
        badging.source.change();
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.service->badges(), mailBadges);
    }

    void aChangeDuringALookIsLookedAtAfterIt()
    {
        Badging badging;
        badging.source.change();
        badging.source.change();
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({}));
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.source.looks(), 0);
        QCOMPARE(badging.service->badges(), mailBadges);
    }

    void theLaterTileOfAnApplicationWins()
    {
        Badging badging;
        const QString copy = QStringLiteral("/home/me/Mail.app");
        badging.bundles.bundles[copy] = {mail, std::nullopt, std::nullopt};
        QVERIFY(badging.source.answer({mailTile, {copy, QStringLiteral("9")}}));
        QCOMPARE(badging.service->badges(), (Badges{{mail, QStringLiteral("9")}}));
    }

    void tilesWithoutIdentifierAreSkipped()
    {
        Badging badging;
        const QString nameless = QStringLiteral("/Applications/Nameless.app");
        badging.bundles.bundles[nameless] = {};
        QVERIFY(badging.source.answer({{nameless, QStringLiteral("1")},
            {QStringLiteral("/Applications/Gone.app"), QStringLiteral("2")}, mailTile}));
        QCOMPARE(badging.service->badges(), mailBadges);
    }

    void aBundleIsOpenedUntilItHasAnIdentifier()
    {
        Badging badging;
        const QString late = QStringLiteral("/Applications/Late.app");
        const QList<BadgeTile> tiles{mailTile, {late, QStringLiteral("1")}};
        QVERIFY(badging.source.answer(tiles));
        badging.bundles.bundles[late] = {QStringLiteral("late"), std::nullopt, std::nullopt};
        for (int look = 0; look < 3; ++look) {
            badging.clock.advance(2s);
            QVERIFY(badging.source.answer(tiles));
        }
        QCOMPARE(badging.bundles.infosAsked, (QStringList{mailTile.path, late, late}));
        QCOMPARE(badging.service->badge(QStringLiteral("late")), std::optional(QStringLiteral("1")));
    }

    void whatABundleIsIsAskedAgainOnceApplicationsChange()
    {
        Badging badging;
        QVERIFY(badging.source.answer({mailTile}));
        const QString post = QStringLiteral("org.example.post");
        badging.bundles.bundles[mailTile.path] = {post, std::nullopt, std::nullopt};
        badging.bundles.change();
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.service->badges(), (Badges{{post, QStringLiteral("3")}}));
    }

    void applicationsThatChangeDuringALookAreLookedAtAfterIt()
    {
        Badging badging;
        badging.bundles.change();
        QCOMPARE(badging.source.looks(), 1);
        QVERIFY(badging.source.answer({}));
        QCOMPARE(badging.source.looks(), 1);
    }

    void applicationsThatChangeMatterToNobodyWhoWantsNoBadges()
    {
        Badging badging(false);
        badging.bundles.change();
        QCOMPARE(badging.source.looks(), 0);
    }

    void onlyChangesArePublished()
    {
        Badging badging;
        QVERIFY(badging.source.answer({mailTile}));
        badging.clock.advance(2s);
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.changes.count(), 1);
    }

    void aLookMayOutliveTheService()
    {
        Badging badging;
        badging.service.reset();
        QVERIFY(badging.source.answer({mailTile}));
        QCOMPARE(badging.source.looks(), 0);
    }
};

MOORLINE_TEST(AppBadgeServiceTest);
#include "AppBadgeServiceTest.moc"

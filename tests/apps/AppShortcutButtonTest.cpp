#include "apps/AppShortcutButton.h"

#include "IconsFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// A button in a view of its own, with its icon at 20, 20.
struct Fixture : IconsFixture {
    explicit Fixture(bool isPinned = true, const std::optional<AppShortcut> &shortcut = std::nullopt)
        : button(new AppShortcutButton(context(), shortcut.value_or(notes), isPinned))
    {
        button->setPos(20, 20);
        hand.scene.addItem(button);
    }

    Hand hand;
    AppShortcutButton *button;
};

constexpr QPoint onTheIcon(40, 40);

} // namespace

class AppShortcutButtonTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itTakesItsIconAndTheDotBelow()
    {
        QCOMPARE(AppShortcutButton::sizeFor(46), QSizeF(46, 52));
        QCOMPARE(AppShortcutButton::sizeFor(24), QSizeF(24, 30));
        Fixture fixture;
        QCOMPARE(fixture.button->size(), QSizeF(46, 52));
        fixture.button->setIconSize(30);
        QCOMPARE(fixture.button->size(), QSizeF(30, 36));
    }

    void itsTooltipIsTheName()
    {
        Fixture fixture;
        QCOMPARE(fixture.button->helpText(), QStringLiteral("Notes"));
        fixture.button->setShortcut({fixture.notes.path, fixture.notes.bundleIdentifier, QStringLiteral("Jotter")});
        QCOMPARE(fixture.button->helpText(), QStringLiteral("Jotter"));
    }

    void theFileManagerStandsUnderItsOwnName()
    {
        Fixture fixture(true, IconsFixture().finder);
        fixture.platform.appBundles.bundles[fixture.finder.path].displayName = QStringLiteral("Files");
        fixture.platform.appBundles.change();
        QCOMPARE(fixture.button->helpText(), QStringLiteral("Files"));
        QCOMPARE(fixture.button->description().name, QStringLiteral("Files"));
        QCOMPARE(titles(fixture.button->menu()).first(), QStringLiteral("Open Files"));
        QCOMPARE(fixture.button->shortcut().name, QStringLiteral("Finder"));
    }

    void aClickLaunches()
    {
        Fixture fixture;
        fixture.hand.click(onTheIcon);
        QCOMPARE(fixture.platform.workspace.openings.size(), 1);
        QCOMPARE(fixture.platform.workspace.openings.first().path, fixture.notes.path);
        QVERIFY(fixture.platform.workspace.openings.first().files.isEmpty());
    }

    void aDoubleClickLaunchesOnce()
    {
        Fixture fixture;
        fixture.hand.doubleClick(onTheIcon);
        QCOMPARE(fixture.platform.workspace.openings.size(), 1);
    }

    void aClickBringsForwardWhatRuns()
    {
        Fixture fixture;
        fixture.run(fixture.notes);
        fixture.hand.click(onTheIcon);
        QCOMPARE(fixture.platform.workspace.openings.size(), 0);
        QCOMPARE(fixture.platform.workspace.activated.size(), 1);
    }

    void aClickOnTheFileManagerAsksItForAWindow()
    {
        Fixture fixture(true, IconsFixture().finder);
        fixture.hand.click(onTheIcon);
        QCOMPARE(fixture.platform.fileManager.timesForward, 1);
        QVERIFY(fixture.platform.workspace.openings.isEmpty());
    }

    void thePointerHitsAboveAndBelowToo_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<bool>("hits");
        QTest::newRow("above the icon") << QPoint(40, 1) << true;
        QTest::newRow("below the dot") << QPoint(40, 90) << true;
        QTest::newRow("left") << QPoint(19, 40) << false;
        QTest::newRow("leftmost") << QPoint(20, 40) << true;
        QTest::newRow("rightmost") << QPoint(65, 40) << true;
        QTest::newRow("right") << QPoint(66, 40) << false;
    }

    void thePointerHitsAboveAndBelowToo()
    {
        QFETCH(QPoint, place);
        QFETCH(bool, hits);
        Fixture fixture;
        fixture.hand.click(place);
        QCOMPARE(fixture.platform.workspace.openings.size(), hits ? 1 : 0);
    }

    void theMenu_data()
    {
        QTest::addColumn<bool>("isPinned");
        QTest::addColumn<bool>("isRunning");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("lines");
        const QString notes = QStringLiteral("Notes");
        const QString finder = QStringLiteral("Finder");
        QTest::newRow("pinned") << true << false << notes << QStringLiteral("Open Notes|-|Remove from Dock");
        QTest::newRow("pinned, running") << true << true << notes
                                         << QStringLiteral("Open Notes|-|Remove from Dock|-|Quit Notes");
        QTest::newRow("recent") << false << false << notes << QStringLiteral("Open Notes|-|Pin to Dock");
        QTest::newRow("recent, running") << false << true << notes
                                         << QStringLiteral("Open Notes|-|Pin to Dock|-|Quit Notes");
        QTest::newRow("file manager") << true << false << finder << QStringLiteral("Open Finder|-|Remove from Dock");
        QTest::newRow("file manager, running")
            << true << true << finder << QStringLiteral("Open Finder|-|Remove from Dock");
    }

    void theMenu()
    {
        QFETCH(bool, isPinned);
        QFETCH(bool, isRunning);
        QFETCH(QString, name);
        QFETCH(QString, lines);
        const IconsFixture known;
        Fixture fixture(isPinned, name == known.finder.name ? known.finder : known.notes);
        if (isRunning)
            fixture.run(fixture.button->shortcut());
        QCOMPARE(titles(fixture.button->menu()).join(u'|'), lines);
    }

    void openLaunches()
    {
        Fixture fixture;
        QVERIFY(choose(fixture.button->menu(), QStringLiteral("Open Notes")));
        QCOMPARE(fixture.platform.workspace.openings.size(), 1);
    }

    void removeUnpins()
    {
        Fixture fixture;
        fixture.pin({fixture.mail, fixture.notes});
        QVERIFY(choose(fixture.button->menu(), QStringLiteral("Remove from Dock")));
        QCOMPARE(fixture.store.settings().appShortcuts, QList{fixture.mail});
    }

    void pinPinsBehindTheOthers()
    {
        Fixture fixture(false);
        fixture.pin({fixture.mail});
        QVERIFY(choose(fixture.button->menu(), QStringLiteral("Pin to Dock")));
        QCOMPARE(fixture.store.settings().appShortcuts, (QList{fixture.mail, fixture.notes}));
    }

    void quitAsksEveryInstance()
    {
        Fixture fixture;
        fixture.run(fixture.notes);
        fixture.run(fixture.notes);
        fixture.run(fixture.mail);
        QVERIFY(choose(fixture.button->menu(), QStringLiteral("Quit Notes")));
        QCOMPARE(fixture.platform.workspace.terminated.size(), 2);
        QCOMPARE(fixture.platform.workspace.terminated.first().bundleIdentifier, fixture.notes.bundleIdentifier);
    }

    void theMenuOutlivesItsButton()
    {
        Fixture fixture;
        const Menu menu = fixture.button->menu();
        delete fixture.button;
        QVERIFY(choose(menu, QStringLiteral("Open Notes")));
        QCOMPARE(fixture.platform.workspace.openings.size(), 1);
    }

    void theMenuOpensAboveTheButton()
    {
        Fixture fixture;
        QVERIFY(fixture.hand.askForMenu(onTheIcon));
        QVERIFY(fixture.stage.isOpenAt(*fixture.button));
        QVERIFY(fixture.holds.isHeld());
        fixture.stage.close();
    }

    void assistiveProgramsAreTold()
    {
        Fixture fixture;
        const auto description = [&] { return fixture.button->description(); };
        QCOMPARE(description().role, QAccessible::Button);
        QCOMPARE(description().name, QStringLiteral("Notes"));
        QCOMPARE(description().state, QString());
        fixture.run(fixture.notes);
        QCOMPARE(description().state, QStringLiteral("Running"));
        fixture.setBadges({{fixture.notes.path, QStringLiteral("12345")}});
        QCOMPARE(description().state, QStringLiteral("Running, 999+"));
        fixture.end(fixture.notes);
        QCOMPARE(description().state, QStringLiteral("999+"));
    }

    void itRunsWhileItsApplicationDoes()
    {
        Fixture fixture;
        QVERIFY(!fixture.button->isRunning());
        fixture.run(fixture.mail);
        QVERIFY(!fixture.button->isRunning());
        fixture.run(fixture.notes);
        QVERIFY(fixture.button->isRunning());
        fixture.end(fixture.notes);
        QVERIFY(!fixture.button->isRunning());
    }

    void itRunsUnderTheNameItsApplicationHasNow()
    {
        Fixture fixture;
        const QString now = QStringLiteral("org.example.notes2");
        const AppShortcut renamed{QStringLiteral("/Applications/Notes 2.app"), now, QStringLiteral("Notes")};
        fixture.install(renamed);
        fixture.run(renamed);
        QVERIFY(!fixture.button->isRunning());
        fixture.platform.appBundles.places[*fixture.notes.bundleIdentifier] = renamed.path;
        fixture.platform.appBundles.change();
        QVERIFY(fixture.button->isRunning());
    }

    void withoutAnIdentifierItNeverRuns()
    {
        const AppShortcut nameless{QStringLiteral("/Applications/Old.app"), std::nullopt, QStringLiteral("Old")};
        Fixture fixture(true, nameless);
        fixture.run(fixture.notes);
        QVERIFY(!fixture.button->isRunning());
        QCOMPARE(titles(fixture.button->menu()).last(), QStringLiteral("Remove from Dock"));
    }

    void theBadgeIsThatOfItsApplication()
    {
        Fixture fixture;
        fixture.setBadges({{fixture.mail.path, QStringLiteral("7")}});
        QCOMPARE(fixture.button->badge(), QString());
        fixture.setBadges({{fixture.notes.path, QStringLiteral("7")}});
        QCOMPARE(fixture.button->badge(), QStringLiteral("7"));
        fixture.setBadges({});
        QCOMPARE(fixture.button->badge(), QString());
    }

    void theBadgeIsThatOfTheNameItsApplicationHasNow()
    {
        Fixture fixture;
        const QString now = QStringLiteral("org.example.notes2");
        const AppShortcut renamed{QStringLiteral("/Applications/Notes 2.app"), now, QStringLiteral("Notes")};
        fixture.install(renamed);
        fixture.setBadges({{renamed.path, QStringLiteral("7")}});
        QCOMPARE(fixture.button->badge(), QString());
        fixture.platform.appBundles.places[*fixture.notes.bundleIdentifier] = renamed.path;
        fixture.platform.appBundles.change();
        QCOMPARE(fixture.button->badge(), QStringLiteral("7"));
    }

    void badgesGoWhenTheyAreSwitchedOff()
    {
        Fixture fixture;
        fixture.setBadges({{fixture.notes.path, QStringLiteral("7")}});
        fixture.store.change([](Settings &settings) { settings.showAppBadges = false; });
        QCOMPARE(fixture.button->badge(), QString());
    }
};

MOORLINE_TEST(AppShortcutButtonTest);
#include "AppShortcutButtonTest.moc"

#include "apps/RecentAppsWidget.h"

#include "IconsFixture.h"
#include "apps/RecentAppsService.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

struct Fixture : IconsFixture {
    Fixture()
    {
        recent.start();
        hand.scene.addItem(row);
    }

    /// The application starts, and the user turns to it.
    void use(const AppShortcut &shortcut)
    {
        const auto application = platform.workspace.launch(*shortcut.bundleIdentifier, shortcut.path);
        platform.workspace.bringForward(application);
    }

    [[nodiscard]] QString names() const
    {
        QStringList shown;
        for (const AppShortcutButton *button : row->buttons())
            shown.append(button->shortcut().name);
        return shown.join(u' ');
    }

    RecentAppsService recent{{.store = store,
        .launcher = launcher,
        .running = running,
        .workspace = platform.workspace,
        .bundles = platform.appBundles,
        .files = platform.files,
        .defaults = platform.userDefaults,
        .clock = platform.clock}};
    Hand hand;
    RecentAppsWidget *row = new RecentAppsWidget(recent, context());
};

} // namespace

class RecentAppsWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itShowsWhatTheServiceLists()
    {
        Fixture fixture;
        QVERIFY(fixture.row->buttons().isEmpty());
        QCOMPARE(fixture.row->preferredSize(), QSizeF(0, 0));
        fixture.use(fixture.notes);
        fixture.use(fixture.mail);
        QCOMPARE(fixture.names(), QStringLiteral("Mail Notes"));
        QCOMPARE(fixture.row->preferredSize(), QSizeF(98, 52));
    }

    void whatWasListedBeforeIsThere()
    {
        Fixture fixture;
        fixture.use(fixture.notes);
        const RecentAppsWidget second(fixture.recent, fixture.context());
        QCOMPARE(second.buttons().size(), 1);
    }

    void buttonsStayTheSameWhenTheOrderChanges()
    {
        Fixture fixture;
        fixture.use(fixture.notes);
        fixture.use(fixture.mail);
        const auto before = fixture.row->buttons();
        fixture.platform.workspace.bringForward(fixture.platform.workspace.running->first());
        QCOMPARE(fixture.names(), QStringLiteral("Notes Mail"));
        QCOMPARE(fixture.row->buttons(), (QList{before[1], before[0]}));
    }

    void onePinnedFromItsMenuLeaves()
    {
        Fixture fixture;
        fixture.use(fixture.notes);
        fixture.use(fixture.mail);
        QVERIFY(choose(fixture.row->buttons().last()->menu(), QStringLiteral("Pin to Dock")));
        QCOMPARE(fixture.store.settings().appShortcuts, QList{fixture.notes});
        QCOMPARE(fixture.names(), QStringLiteral("Mail"));
    }

    void onePinnedStaysWhereThatIsWanted()
    {
        Fixture fixture;
        fixture.store.change([](Settings &settings) { settings.hideRecentAppsAlreadyPinned = false; });
        fixture.use(fixture.notes);
        QVERIFY(choose(fixture.row->buttons().first()->menu(), QStringLiteral("Pin to Dock")));
        QCOMPARE(fixture.names(), QStringLiteral("Notes"));
    }

    void theRowIsAGroup()
    {
        const Fixture fixture;
        QCOMPARE(fixture.row->description().role, QAccessible::Grouping);
        QCOMPARE(fixture.row->description().name, QStringLiteral("Recent Apps"));
    }
};

MOORLINE_TEST(RecentAppsWidgetTest);
#include "RecentAppsWidgetTest.moc"

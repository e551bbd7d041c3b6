#include "app/StatusItem.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

struct Fixture : DockFixture {
    Fixture()
        : item(statusItem(store,
            {[this] { called.append(QStringLiteral("settings")); }, [this] { called.append(QStringLiteral("quit")); }}))
    {
    }

    /// As the menu holds it when it opens now.
    [[nodiscard]] MenuItem menuItem(const QString &title) const
    {
        for (const MenuItem &candidate : item.menu()) {
            if (candidate.title == title)
                return candidate;
        }
        return {};
    }

    QStringList called;
    StatusBarItem item;
};

const QString settingsTitle = QStringLiteral("Dock Settings…");
const QString alwaysVisible = QStringLiteral("Always Visible");
const QString quitTitle = QStringLiteral("Quit Moorline");

} // namespace

class StatusItemTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theMenuHoldsItsCommandsInOrder()
    {
        Fixture fixture;
        QStringList titles;
        for (const MenuItem &item : fixture.item.menu())
            titles.append(item.isSeparator() ? QStringLiteral("-") : item.title);
        QCOMPARE(
            titles, (QStringList{settingsTitle, QStringLiteral("-"), alwaysVisible, QStringLiteral("-"), quitTitle}));
    }

    void commandsHaveTheirShortcuts()
    {
        const Fixture fixture;
        QCOMPARE(fixture.menuItem(settingsTitle).shortcut, QKeySequence(QStringLiteral("Ctrl+,")));
        QCOMPARE(fixture.menuItem(alwaysVisible).shortcut, QKeySequence());
        QCOMPARE(fixture.menuItem(quitTitle).shortcut, QKeySequence(QStringLiteral("Ctrl+Q")));
    }

    void alwaysVisibleIsKnownInEveryLanguage()
    {
        QCOMPARE(Fixture().menuItem(alwaysVisible).identifier, QStringLiteral("alwaysVisible"));
    }

    void theCheckMarkIsThatOfTheMomentTheMenuOpens()
    {
        Fixture fixture;
        const MenuItem before = fixture.menuItem(alwaysVisible);
        QVERIFY(before.isCheckable);
        QVERIFY(before.isChecked);
        fixture.change(
            [](Settings &settings) { settings.visibilityMode = DockVisibilityMode::hideWhenSystemDockAppears; });
        QVERIFY(fixture.menuItem(alwaysVisible).isCheckable);
        QVERIFY(!fixture.menuItem(alwaysVisible).isChecked);
    }

    void onlyAlwaysVisibleCarriesACheckMark()
    {
        const Fixture fixture;
        QVERIFY(!fixture.menuItem(settingsTitle).isCheckable);
        QVERIFY(!fixture.menuItem(quitTitle).isCheckable);
    }

    void alwaysVisibleFlipsTheModeWithOneChange()
    {
        Fixture fixture;
        int changes = 0;
        connect(&fixture.store, &SettingsStore::settingsDidChange, this, [&changes] { ++changes; });
        // The second time in a menu that is still open from the first.
        const MenuItem item = fixture.menuItem(alwaysVisible);
        item.action();
        QCOMPARE(fixture.store.settings().visibilityMode, DockVisibilityMode::hideWhenSystemDockAppears);
        QCOMPARE(changes, 1);
        item.action();
        QCOMPARE(fixture.store.settings().visibilityMode, DockVisibilityMode::alwaysVisible);
        QCOMPARE(changes, 2);
    }

    void commandsAreHandedOn()
    {
        const Fixture fixture;
        fixture.menuItem(settingsTitle).action();
        fixture.menuItem(quitTitle).action();
        QCOMPARE(fixture.called, (QStringList{QStringLiteral("settings"), QStringLiteral("quit")}));
    }

    void aCommandThatLeadsNowhereCannotBeChosen()
    {
        DockFixture fixture;
        const Menu menu = statusItem(fixture.store, {}).menu();
        QVERIFY(!menu.first().isEnabled());
        QVERIFY(menu.at(2).isEnabled());
        QVERIFY(!menu.last().isEnabled());
    }

    void theItemShowsTheDockSymbolUnderTheProgramsName()
    {
        const Fixture fixture;
        QCOMPARE(fixture.item.name, QStringLiteral("Moorline"));
        QCOMPARE(fixture.item.symbol, QStringLiteral("dock.rectangle"));
        QCOMPARE(fixture.item.color, QColor(166, 166, 166));
    }
};

MOORLINE_TEST(StatusItemTest);

#include "StatusItemTest.moc"

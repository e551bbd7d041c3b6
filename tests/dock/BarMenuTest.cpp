#include "dock/BarMenu.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

QStringList titles(const Menu &menu)
{
    QStringList result;
    for (const MenuItem &item : menu)
        result.append(item.isSeparator() ? QStringLiteral("-") : item.title);
    return result;
}

MenuItem item(const Menu &menu, const QString &title)
{
    for (const MenuItem &candidate : menu) {
        if (candidate.title == title)
            return candidate;
    }
    return {};
}

const QString settingsTitle = QStringLiteral("Dock Settings…");
const QString alwaysTitle = QStringLiteral("Always visible");
const QString autoTitle = QStringLiteral("Hide when the macOS Dock appears");
const QString quitTitle = QStringLiteral("Quit Moorline");

} // namespace

class BarMenuTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void holdsTheCommandsInOrder()
    {
        DockFixture fixture;
        const QString line = QStringLiteral("-");
        QCOMPARE(titles(barMenu(fixture.store, {})),
            (QStringList{settingsTitle, line, alwaysTitle, autoTitle, line, quitTitle}));
    }

    void theCurrentModeCarriesTheCheckMark()
    {
        DockFixture fixture;
        Menu menu = barMenu(fixture.store, {});
        QVERIFY(item(menu, alwaysTitle).isChecked);
        QVERIFY(!item(menu, autoTitle).isChecked);
        item(menu, autoTitle).action();
        QCOMPARE(fixture.store.settings().visibilityMode, DockVisibilityMode::hideWhenSystemDockAppears);
        menu = barMenu(fixture.store, {});
        QVERIFY(!item(menu, alwaysTitle).isChecked);
        QVERIFY(item(menu, autoTitle).isChecked);
    }

    void choosingTheCurrentModeChangesNothing()
    {
        DockFixture fixture;
        int changes = 0;
        connect(&fixture.store, &SettingsStore::settingsDidChange, this, [&changes] { ++changes; });
        item(barMenu(fixture.store, {}), alwaysTitle).action();
        QCOMPARE(changes, 0);
    }

    void commandsAreHandedOn()
    {
        DockFixture fixture;
        QStringList called;
        const Menu menu = barMenu(fixture.store,
            {[&called] { called.append(QStringLiteral("settings")); },
                [&called] { called.append(QStringLiteral("quit")); }});
        item(menu, settingsTitle).action();
        item(menu, quitTitle).action();
        QCOMPARE(called, (QStringList{QStringLiteral("settings"), QStringLiteral("quit")}));
    }

    void aCommandThatLeadsNowhereCannotBeChosen()
    {
        DockFixture fixture;
        QVERIFY(!item(barMenu(fixture.store, {}), settingsTitle).action);
    }
};

MOORLINE_TEST(BarMenuTest);

#include "BarMenuTest.moc"

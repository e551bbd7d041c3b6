#include "dock/BarMenu.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

#include <QMenu>

using namespace moorline;
using namespace moorline::test;

namespace {

QStringList titles(const QMenu &menu)
{
    QStringList result;
    for (const QAction *action : menu.actions())
        result.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return result;
}

QAction *action(const QMenu &menu, const QString &title)
{
    for (QAction *candidate : menu.actions()) {
        if (candidate->text() == title)
            return candidate;
    }
    return nullptr;
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
        const auto menu = makeBarMenu(fixture.store, fixture.symbols, {});
        const QString line = QStringLiteral("-");
        QCOMPARE(titles(*menu), (QStringList{settingsTitle, line, alwaysTitle, autoTitle, line, quitTitle}));
    }

    void theCurrentModeCarriesTheCheckMark()
    {
        DockFixture fixture;
        auto menu = makeBarMenu(fixture.store, fixture.symbols, {});
        QVERIFY(!action(*menu, alwaysTitle)->icon().isNull());
        QVERIFY(action(*menu, autoTitle)->icon().isNull());
        QCOMPARE(fixture.symbolCatalogue.requests.last().name, QStringLiteral("checkmark"));
        action(*menu, autoTitle)->trigger();
        QCOMPARE(fixture.store.settings().visibilityMode, DockVisibilityMode::hideWhenSystemDockAppears);
        menu = makeBarMenu(fixture.store, fixture.symbols, {});
        QVERIFY(action(*menu, alwaysTitle)->icon().isNull());
        QVERIFY(!action(*menu, autoTitle)->icon().isNull());
    }

    void choosingTheCurrentModeChangesNothing()
    {
        DockFixture fixture;
        int changes = 0;
        connect(&fixture.store, &SettingsStore::settingsDidChange, this, [&changes] { ++changes; });
        const auto menu = makeBarMenu(fixture.store, fixture.symbols, {});
        action(*menu, alwaysTitle)->trigger();
        QCOMPARE(changes, 0);
    }

    void commandsAreHandedOn()
    {
        DockFixture fixture;
        QStringList called;
        const auto menu = makeBarMenu(fixture.store, fixture.symbols,
            {[&called] { called.append(QStringLiteral("settings")); },
                [&called] { called.append(QStringLiteral("quit")); }});
        action(*menu, settingsTitle)->trigger();
        action(*menu, quitTitle)->trigger();
        QCOMPARE(called, (QStringList{QStringLiteral("settings"), QStringLiteral("quit")}));
    }

    void aCommandThatLeadsNowhereCannotBeChosen()
    {
        DockFixture fixture;
        const auto menu = makeBarMenu(fixture.store, fixture.symbols, {});
        QVERIFY(!action(*menu, settingsTitle)->isEnabled());
    }
};

MOORLINE_TEST(BarMenuTest);

#include "BarMenuTest.moc"

#include "app/StatusItem.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

struct Fixture : DockFixture {
    Fixture()
        : item(store, statusBar, symbols,
            {[this] { called.append(QStringLiteral("settings")); }, [this] { called.append(QStringLiteral("quit")); }})
    {
    }

    [[nodiscard]] QAction *action(const QString &title) const
    {
        for (QAction *candidate : item.menu().actions()) {
            if (candidate->text() == title)
                return candidate;
        }
        return nullptr;
    }

    QStringList called;
    StatusItem item;
};

/// The offscreen platform has no tray that could come later, and says so once for each item.
void expectTrayWarning()
{
    QTest::ignoreMessage(
        QtWarningMsg, "QObject::connect: No such signal QPlatformNativeInterface::systemTrayWindowChanged(QScreen*)");
}

const QString alwaysVisible = QStringLiteral("Always Visible");

} // namespace

class StatusItemTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theMenuHoldsItsCommandsInOrder()
    {
        Fixture fixture;
        QStringList titles;
        for (const QAction *action : fixture.item.menu().actions())
            titles.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        QCOMPARE(titles,
            (QStringList{QStringLiteral("Dock Settings…"), QStringLiteral("-"), alwaysVisible, QStringLiteral("-"),
                QStringLiteral("Quit Moorline")}));
        QCOMPARE(fixture.action(QStringLiteral("Dock Settings…"))->shortcut(), QKeySequence(QStringLiteral("Ctrl+,")));
        QCOMPARE(fixture.action(QStringLiteral("Quit Moorline"))->shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
        QCOMPARE(fixture.action(alwaysVisible)->objectName(), QStringLiteral("alwaysVisible"));
    }

    void theCheckMarkIsSetWhenTheMenuOpens()
    {
        Fixture fixture;
        auto &menu = const_cast<QMenu &>(fixture.item.menu());
        Q_EMIT menu.aboutToShow();
        QVERIFY(fixture.action(alwaysVisible)->isChecked());
        fixture.change(
            [](Settings &settings) { settings.visibilityMode = DockVisibilityMode::hideWhenSystemDockAppears; });
        QVERIFY(fixture.action(alwaysVisible)->isChecked());
        Q_EMIT menu.aboutToShow();
        QVERIFY(!fixture.action(alwaysVisible)->isChecked());
    }

    void alwaysVisibleFlipsTheModeWithOneChange()
    {
        Fixture fixture;
        int changes = 0;
        connect(&fixture.store, &SettingsStore::settingsDidChange, this, [&changes] { ++changes; });
        fixture.action(alwaysVisible)->trigger();
        QCOMPARE(fixture.store.settings().visibilityMode, DockVisibilityMode::hideWhenSystemDockAppears);
        QCOMPARE(changes, 1);
        fixture.action(alwaysVisible)->trigger();
        QCOMPARE(fixture.store.settings().visibilityMode, DockVisibilityMode::alwaysVisible);
        QCOMPARE(changes, 2);
    }

    void commandsAreHandedOn()
    {
        Fixture fixture;
        fixture.action(QStringLiteral("Dock Settings…"))->trigger();
        fixture.action(QStringLiteral("Quit Moorline"))->trigger();
        QCOMPARE(fixture.called, (QStringList{QStringLiteral("settings"), QStringLiteral("quit")}));
    }

    void theItemIsInstalledAnewWhenAStatusBarComes()
    {
        Fixture fixture;
        expectTrayWarning();
        fixture.item.install();
        // A second item takes the place of the first.
        expectTrayWarning();
        Q_EMIT fixture.statusBar.becameAvailable();
    }

    void theItemShowsTheDockSymbol()
    {
        const Fixture fixture;
        QCOMPARE(fixture.symbolCatalogue.requests.first().name, QStringLiteral("dock.rectangle"));
    }
};

MOORLINE_TEST(StatusItemTest);

#include "StatusItemTest.moc"

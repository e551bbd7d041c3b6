#include "platform/linux/desktop/TrayMenu.h"

#include "harness/TestCase.h"

#include <QApplication>

using namespace moorline;
using namespace moorline::test;

class TrayMenuTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theMenuIsThatOfTheMomentItOpens()
    {
        bool isChecked = true;
        int chosen = 0;
        TrayMenu menu([&] {
            return Menu{{.title = QStringLiteral("Bread & butter"),
                            .action = [&chosen] { ++chosen; },
                            .isChecked = isChecked,
                            .shortcut = QKeySequence(QStringLiteral("Ctrl+Q")),
                            .isCheckable = true,
                            .identifier = QStringLiteral("bread")},
                MenuItem::separator(), {.title = QStringLiteral("Later")}};
        });
        for (const bool expected : {true, false}) {
            isChecked = expected;
            menu.popUp();
            QTRY_VERIFY(openMenu());
            const QList<QAction *> actions = openMenu()->actions();
            QCOMPARE(actions.size(), 3);
            QCOMPARE(actions[0]->text(), QStringLiteral("Bread && butter"));
            QCOMPARE(actions[0]->objectName(), QStringLiteral("bread"));
            QCOMPARE(actions[0]->shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
            QVERIFY(actions[0]->isShortcutVisibleInContextMenu());
            QVERIFY(actions[0]->isCheckable());
            QCOMPARE(actions[0]->isChecked(), expected);
            QVERIFY(actions[1]->isSeparator());
            QVERIFY(!actions[2]->isEnabled());
            openMenu()->close();
            QTRY_VERIFY(!openMenu());
        }
    }

    void anItemIsChosen()
    {
        int chosen = 0;
        TrayMenu menu([&] { return Menu{{.title = QStringLiteral("Quit"), .action = [&chosen] { ++chosen; }}}; });
        menu.popUp();
        // A second wish finds it open.
        menu.popUp();
        QTRY_VERIFY(openMenu());
        openMenu()->actions().first()->trigger();
        QCOMPARE(chosen, 1);
        openMenu()->close();
    }

private:
    [[nodiscard]] static QMenu *openMenu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }
};

MOORLINE_TEST(TrayMenuTest);

#include "TrayMenuTest.moc"

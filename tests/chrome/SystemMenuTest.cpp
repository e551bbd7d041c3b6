#include "StageFixture.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// On a system that draws the menus itself.
struct SystemMenuFixture : StageFixture {
    SystemMenuFixture() { windows.hasSystemMenus = true; }

    void openMenu(QGraphicsWidget &anchor) { stage.openMenu(anchor, menu()); }
    [[nodiscard]] bool isMenuOpen() const { return windows.systemMenu.has_value(); }
};

} // namespace

class SystemMenuTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theSystemDrawsTheMenuWhereItCan()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        QVERIFY(fixture.isMenuOpen());
        QCOMPARE(fixture.windows.systemMenu->menu.size(), 4);
        QCOMPARE(fixture.windows.systemMenu->menu.first().title, QStringLiteral("Open"));
        QVERIFY(fixture.windows.adopted.isEmpty());
        QVERIFY(fixture.windows.shown.isEmpty());
    }

    void aPopoverIsDrawnByTheBarAllTheSame()
    {
        SystemMenuFixture fixture;
        fixture.openPopover(*fixture.icon);
        QVERIFY(fixture.open());
        QVERIFY(!fixture.isMenuOpen());
    }

    void itStandsWhereTheBarsOwnWould()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        // The icon's middle is 303 points into the panel; 80 is 6 points above the pill.
        QCOMPARE(fixture.windows.systemMenu->placement({200, 150}), QPointF(420 + 303 - 100, 80 + 150));
        QCOMPARE(fixture.windows.systemMenu->placement({100, 50}), QPointF(420 + 303 - 50, 80 + 50));
    }

    void itIsOpenUntilTheSystemClosesIt()
    {
        SystemMenuFixture fixture;
        QSignalSpy changed(&fixture.stage, &BarStage::openChanged);
        fixture.openMenu(*fixture.icon);
        QVERIFY(fixture.stage.isOpen());
        QVERIFY(fixture.stage.isOpenAt(*fixture.icon));
        QVERIFY(!fixture.stage.isOpenAt(*fixture.other));
        QVERIFY(fixture.holds.isHeld());
        QCOMPARE(changed.size(), 1);

        fixture.windows.closeSystemMenu();
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!fixture.holds.isHeld());
        QVERIFY(fixture.chosen.isEmpty());
        QCOMPARE(changed.size(), 2);
    }

    void whatIsChosenIsDone()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        fixture.windows.closeSystemMenu(3);
        QCOMPARE(fixture.chosen, QStringList{QStringLiteral("Quit")});
        QVERIFY(!fixture.stage.isOpen());
    }

    void askingTwiceCloses()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        fixture.openMenu(*fixture.icon);
        QVERIFY(!fixture.isMenuOpen());
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!fixture.holds.isHeld());
        fixture.openMenu(*fixture.icon);
        QVERIFY(fixture.isMenuOpen());
    }

    void openingAnotherClosesTheFirst()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        fixture.openPopover(*fixture.other);
        QVERIFY(!fixture.isMenuOpen());
        QVERIFY(fixture.stage.isOpenAt(*fixture.other));
        fixture.openMenu(*fixture.icon);
        QVERIFY(fixture.isMenuOpen());
        QVERIFY(!fixture.open());
        QVERIFY(fixture.stage.isOpenAt(*fixture.icon));
    }

    void itGoesWithItsItem()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        delete fixture.icon;
        QVERIFY(!fixture.isMenuOpen());
        fixture.openMenu(*fixture.other);
        fixture.other->hide();
        QVERIFY(!fixture.isMenuOpen());
        QVERIFY(!fixture.stage.isOpen());
    }

    void itGoesWhenTheScreensChange()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        fixture.screens.set({});
        QVERIFY(!fixture.isMenuOpen());
        fixture.openMenu(*fixture.icon);
        QVERIFY(!fixture.isMenuOpen());
    }

    void noHelpIsShownBesideIt()
    {
        SystemMenuFixture fixture;
        fixture.stage.showHelp(*fixture.icon, QStringLiteral("Mail"));
        fixture.openMenu(*fixture.icon);
        QVERIFY(!fixture.stage.helpTag().isVisible());
        fixture.stage.showHelp(*fixture.icon, QStringLiteral("Mail"));
        QVERIFY(!fixture.stage.helpTag().isVisible());
    }

    void aPressOnTheBarClosesIt_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("left, on its item") << QPointF(300, 40) << Qt::LeftButton << true;
        QTest::newRow("right, on its item") << QPointF(300, 40) << Qt::RightButton << true;
        QTest::newRow("left, beside it") << QPointF(200, 40) << Qt::LeftButton << true;
        QTest::newRow("right, beside it") << QPointF(200, 40) << Qt::RightButton << false;
    }

    void aPressOnTheBarClosesIt()
    {
        QFETCH(const QPointF, place);
        QFETCH(const Qt::MouseButton, button);
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        QTEST(fixture.stage.takesPress(place, button), "isTaken");
        QVERIFY(!fixture.isMenuOpen());
    }

    void theBarMayChangeUnderIt()
    {
        SystemMenuFixture fixture;
        fixture.openMenu(*fixture.icon);
        fixture.stage.setBody(StageFixture::rectangle({80, 13, 400, 72}));
        fixture.icon->setX(200);
        QCoreApplication::sendPostedEvents();
        QVERIFY(fixture.isMenuOpen());
    }
};

MOORLINE_TEST(SystemMenuTest);

#include "SystemMenuTest.moc"

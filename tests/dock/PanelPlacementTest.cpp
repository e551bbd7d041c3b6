#include "dock/PanelPlacement.h"

#include "dock/BarMetrics.h"
#include "fakes/FakeScreens.h"
#include "harness/TestCase.h"
#include "support/RectText.h"

using namespace moorline;
using namespace moorline::test;

class PanelPlacementTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void contentWidthIsClampedToTheScreen_data()
    {
        QTest::addColumn<qreal>("content");
        QTest::addColumn<qreal>("screen");
        QTest::addColumn<qreal>("panel");
        QTest::newRow("too narrow") << 100.0 << 1440.0 << 160.0;
        QTest::newRow("too wide") << 2000.0 << 1440.0 << 1424.0;
        QTest::newRow("fits") << 612.4 << 1440.0 << 612.0;
        QTest::newRow("rounds half up") << 612.5 << 1440.0 << 613.0;
        QTest::newRow("on a tiny screen the cap wins") << 100.0 << 170.0 << 154.0;
    }

    void contentWidthIsClampedToTheScreen()
    {
        QFETCH(qreal, content);
        QFETCH(qreal, screen);
        QTEST(panelWidth(content, screen), "panel");
    }

    void thePanelStandsCentredWithItsMarginBelowTheGap()
    {
        const auto screen = FakeScreens::screen({0, 0, 1440, 900});
        QCOMPARE(shownPanelFrame(screen, {460, 98}, 2), QRectF(490, -11, 460, 98));
        QCOMPARE(shownPanelFrame(screen, {461, 132}, 0.4), QRectF(490, -13, 461, 132));
    }

    void thePanelFollowsTheOriginOfItsScreen()
    {
        const auto screen = FakeScreens::screen({1440, -180, 1920, 1080});
        QCOMPARE(shownPanelFrame(screen, {460, 98}, 2), QRectF(2170, -191, 460, 98));
        QCOMPARE(hiddenPanelFrame(screen, QRectF(2170, -191, 460, 98)), QRectF(2170, -282, 460, 98));
    }

    void withoutAScreenOnlyTheSizeMeansAnything()
    {
        QCOMPARE(shownPanelFrame(std::nullopt, {460, 98}, 2), QRectF(0, 0, 460, 98));
    }

    void aHiddenPanelIsFourPointsBelowTheScreen()
    {
        const auto screen = FakeScreens::screen({0, 0, 1440, 900});
        const QRectF hidden = hiddenPanelFrame(screen, QRectF(490, -11, 460, 132));
        QCOMPARE(hidden, QRectF(490, -136, 460, 132));
        QCOMPARE(hidden.y() + hidden.height(), -4.0);
    }

    void thePrimaryScreenIsTheTargetWhereverItStandsInTheList()
    {
        const auto left = FakeScreens::screen({-1920, 0, 1920, 1080});
        const auto primary = FakeScreens::screen({0, 0, 1440, 900});
        QCOMPARE(targetScreen({left, primary}), primary);
        QCOMPARE(targetScreen({left}), left);
        QCOMPARE(targetScreen({}), std::nullopt);
    }

    void theEdgeOfTheDockHasHysteresis()
    {
        QVERIFY(isAtDockEdge(3.9, false));
        QVERIFY(!isAtDockEdge(4, false));
        QVERIFY(isAtDockEdge(95.9, true));
        QVERIFY(!isAtDockEdge(96, true));
    }

    void thePeekHasHysteresis()
    {
        QVERIFY(!staysOutOfFullScreen(3.9, true));
        QVERIFY(staysOutOfFullScreen(4, true));
        QVERIFY(!staysOutOfFullScreen(101.9, false));
        QVERIFY(staysOutOfFullScreen(102, false));
    }

    void theMeasuresAddUpToThePanel()
    {
        QCOMPARE(BarMetrics::panelHeight, 98.0);
        QCOMPARE(BarMetrics::panelHeightWithNudge, 132.0);
    }

    void framesAreLoggedWithFractions()
    {
        QCOMPARE(rectText({490, -11, 460.5, 98}), QStringLiteral("(490.0, -11.0, 460.5, 98.0)"));
    }
};

MOORLINE_TEST(PanelPlacementTest);

#include "PanelPlacementTest.moc"

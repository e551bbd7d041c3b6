#include "dock/PanelPlacement.h"

#include "dock/BarMetrics.h"
#include "fakes/FakeScreens.h"
#include "harness/TestCase.h"
#include "support/RectText.h"

#include <limits>

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

    void thePointersHeightCountsOnItsScreenOnly()
    {
        const auto screen = FakeScreens::screen({0, -100, 1440, 900});
        const qreal elsewhere = std::numeric_limits<qreal>::infinity();
        QCOMPARE(pointerHeight(screen, {720, -97}), 3.0);
        QCOMPARE(pointerHeight(screen, {0, -100}), 0.0);
        QCOMPARE(pointerHeight(screen, {720, -101}), elsewhere);
        QCOMPARE(pointerHeight(screen, {-1, -97}), elsewhere);
        QCOMPARE(pointerHeight(screen, {1441, -97}), elsewhere);
        QCOMPARE(pointerHeight(std::nullopt, {720, 3}), std::nullopt);
    }

    void framesBeyondAllBoundsAreClamped_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<QRectF>("possible");
        const double infinity = std::numeric_limits<double>::infinity();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("possible") << QRectF(490, -11, 460, 98) << 1.0 << QRectF(490, -11, 460, 98);
        QTest::newRow("infinite") << QRectF(-infinity, infinity, 1e300, -5) << 1.0 << QRectF(-16383, 16383, 16383, 1);
        QTest::newRow("no number") << QRectF(nan, 0, nan, 0) << 1.0 << QRectF(-16383, 0, 1, 1);
        QTest::newRow("in fewer points") << QRectF(1e9, -1e9, 1e9, 98) << 2.0 << QRectF(8191, -8191, 8191, 98);
    }

    void framesBeyondAllBoundsAreClamped()
    {
        QFETCH(QRectF, frame);
        QFETCH(qreal, scale);
        QTEST(possibleFrame(frame, scale), "possible");
    }

    void anAbsurdGapIsClamped()
    {
        Screen screen = FakeScreens::screen({0, 0, 1440, 900});
        QCOMPARE(shownPanelFrame(screen, {460, 98}, 1e300), QRectF(490, 16383, 460, 98));
        screen.scale = 2;
        QCOMPARE(shownPanelFrame(screen, {460, 98}, -1e300), QRectF(490, -8191, 460, 98));
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

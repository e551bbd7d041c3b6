#include "dock/DockWindowController.h"

#include "DockFixture.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "harness/TestCase.h"

#include <QRegularExpression>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

constexpr qreal width = 460;
const QRectF shownFrame(490, -11, width, 98);
const QRectF hiddenFrame(490, -102, width, 98);
/// Long enough for a slide to end.
constexpr auto slide = 300ms;

WindowDescription film()
{
    return {.ownerProcess = 7,
        .layer = 0,
        .bounds = QRectF(0, 0, 1440, 900),
        .kind = WindowKind::normal,
        .isFullScreen = true};
}

/// A controller that shows a bar of a known width on a 1440 × 900 screen.
struct Fixture : DockFixture {
    explicit Fixture(bool debug = false)
        : controller(
            [&] {
                auto context = controllerContext();
                context.debug = debug;
                return context;
            }(),
            makeBar())
    {
    }

    void show()
    {
        controller.show();
        reportContentWidth(width);
    }

    void useAutoMode(double delay = 0.5)
    {
        change([delay](Settings &settings) {
            settings.visibilityMode = DockVisibilityMode::hideWhenSystemDockAppears;
            settings.hideDelaySeconds = delay;
        });
    }

    void putPointer(qreal height) { pointer.place = {720, height}; }

    void revealSystemDock()
    {
        windowServer.windows = {{QStringLiteral("Dock"), 7, FakeWindowServer::dockLevel, QRectF(400, 840, 600, 60)}};
    }

    [[nodiscard]] QRectF frame() const { return panelWindow.frame(); }

    DockWindowController controller;
};

} // namespace

class DockWindowControllerTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void showsOnePanelAboveTheSystemDockOnEverySpace()
    {
        Fixture fixture;
        QVERIFY(!fixture.controller.panel());
        fixture.show();
        const DockPanel *panel = fixture.controller.panel();
        QCOMPARE(fixture.panelWindow.currentLevel, 21);
        QCOMPARE(fixture.panelWindow.behavior, 81U);
        QCOMPARE(fixture.panelWindow.timesOrderedFront, 1);
        QCOMPARE(fixture.frame(), shownFrame);
        fixture.controller.show();
        QCOMPARE(fixture.controller.panel(), panel);
        QCOMPARE(fixture.panelWindow.timesOrderedFront, 1);
    }

    void thePanelIsReadyBeforeItShows()
    {
        Fixture fixture;
        fixture.change([](Settings &settings) { settings.showOverFullScreenApps = true; });
        fixture.show();
        QCOMPARE(fixture.panelWindow.behavior, 337U);
        const QWidget *content = fixture.controller.panel()->content();
        QVERIFY(qobject_cast<const DockHostingView *>(content));
        QCOMPARE(fixture.controller.panel()->focusPolicy(), Qt::NoFocus);
    }

    void theBarFillsThePanel()
    {
        Fixture fixture;
        fixture.show();
        DockPanel *panel = fixture.controller.panel();
        panel->show();
        QTRY_COMPARE(panel->content()->size(), panel->size());
        auto *view = qobject_cast<DockHostingView *>(panel->content());
        QCOMPARE(view->bar().size().toSize(), panel->size());
    }

    void reportedWidthsAreClampedToTheScreen()
    {
        Fixture fixture;
        fixture.show();
        fixture.reportContentWidth(100);
        QCOMPARE(fixture.frame(), QRectF(640, -11, 160, 98));
        fixture.reportContentWidth(2000);
        QCOMPARE(fixture.frame(), QRectF(8, -11, 1424, 98));
    }

    void aWidthThatMovesByAPointOrLessRoundedDoesNotMoveThePanel()
    {
        Fixture fixture;
        fixture.show();
        const auto moves = fixture.panelWindow.frames.size();
        fixture.reportContentWidth(width + 0.4);
        QCOMPARE(fixture.panelWindow.frames.size(), moves);
        fixture.reportContentWidth(width + 1);
        QCOMPARE(fixture.panelWindow.frames.size(), moves + 1);
    }

    void growsInStepWithItsContentWithoutASlide()
    {
        Fixture fixture;
        fixture.show();
        fixture.reportContentWidth(600);
        QCOMPARE(fixture.frame(), QRectF(420, -11, 600, 98));
    }

    void theGapIsMeasuredFromTheScreenEdgeToThePill()
    {
        Fixture fixture;
        fixture.show();
        fixture.change([](Settings &settings) { settings.bottomGap = 20; });
        QCOMPARE(fixture.frame(), QRectF(490, 7, width, 98));
    }

    void thePanelIsHigherWhileTheNudgeCanShow()
    {
        Fixture fixture;
        fixture.show();
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.frame().height(), 132.0);
        fixture.change([](Settings &settings) { settings.showAutoHideNudge = false; });
        QCOMPARE(fixture.frame().height(), 98.0);
    }

    void followsTheScreens()
    {
        Fixture fixture;
        fixture.show();
        fixture.screens.set({FakeScreens::screen({0, 0, 1920, 1080})});
        QVERIFY(qAbs(fixture.frame().center().x() - 960) <= 0.5);
    }

    void looksAgainOnceTheScreensHaveSettled()
    {
        Fixture fixture;
        fixture.show();
        fixture.screens.set({});
        fixture.clock.advance(499ms);
        fixture.screens.setUnannounced({FakeScreens::screen({0, 0, 1920, 1080})});
        const auto moves = fixture.panelWindow.frames.size();
        fixture.clock.advance(1ms);
        QVERIFY(fixture.panelWindow.frames.size() > moves);
        QVERIFY(qAbs(fixture.frame().center().x() - 960) <= 0.5);
    }

    void survivesHavingNoScreen()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.windowServer.setSpaceType(4);
        fixture.screens.set({});
        fixture.putPointer(0);
        fixture.clock.advance(5s);
        fixture.reportContentWidth(700);
        QCOMPARE(fixture.controller.contentWidth(), width);
        QCOMPARE(fixture.controller.shownFrame(), QRectF(0, 0, width, 98));
        fixture.windowServer.setSpaceType(0);
        fixture.screens.set({FakeScreens::screen({0, 0, 1440, 900})});
        fixture.clock.advance(2s);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
    }

    void aBarTooWideForANewScreenIsCutToIt()
    {
        Fixture fixture;
        fixture.change(
            [](Settings &settings) { settings.enabledWidgets = QList<WidgetKind>(30, WidgetKind::monthCounter); });
        fixture.controller.show();
        QCOMPARE(fixture.frame().width(), 1424.0);
        fixture.screens.set({FakeScreens::screen({0, 0, 1024, 768})});
        QCOMPARE(fixture.frame(), QRectF(8, -11, 1008, 98));
    }

    void theDockIsOnlyWatchedInAutoMode()
    {
        Fixture fixture;
        fixture.show();
        QVERIFY(!fixture.clock.repeatingIntervals().contains(100ms));
        fixture.useAutoMode();
        QVERIFY(fixture.clock.repeatingIntervals().contains(100ms));
        fixture.change([](Settings &settings) { settings.visibilityMode = DockVisibilityMode::alwaysVisible; });
        QVERIFY(!fixture.clock.repeatingIntervals().contains(100ms));
    }

    void restingAtTheEdgeMakesWayForTheRevealedDock()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(2);
        fixture.clock.advance(500ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(200ms);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(slide);
        QCOMPARE(fixture.frame(), hiddenFrame);
    }

    void aDockThatStaysHiddenLeavesTheBarAlone()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.putPointer(2);
        fixture.clock.advance(10s);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.revealSystemDock();
        fixture.clock.advance(100ms);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
    }

    void aDockThatNeverHidesNeedsNoWindow()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        fixture.windowServer.setSpaceType(0);
        fixture.useAutoMode();
        fixture.show();
        fixture.putPointer(0);
        fixture.clock.advance(700ms);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
        QCOMPARE(fixture.windowServer.timesListed, 0);
    }

    void pointerLeavingTheZoneResetsTheClock()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(2);
        fixture.clock.advance(400ms);
        fixture.putPointer(4);
        fixture.clock.advance(100ms);
        fixture.putPointer(2);
        fixture.clock.advance(500ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(200ms);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
    }

    void neverHidesBeforeTheDelay_data()
    {
        QTest::addColumn<double>("delay");
        for (const double delay : {0.1, 0.5, 1.0, 2.5})
            QTest::addRow("%g s", delay) << delay;
    }

    void neverHidesBeforeTheDelay()
    {
        QFETCH(double, delay);
        Fixture fixture;
        fixture.useAutoMode(delay);
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(std::chrono::milliseconds(qint64(delay * 1000)));
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(200ms);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
    }

    void aChangeOfTheWallClockDoesNotHideTheBar()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(100ms);
        fixture.clock.setNow(fixture.clock.now().addDays(1));
        fixture.clock.advance(200ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
    }

    void comesBackOnceThePointerIsHighAboveTheEdge()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(1s);
        fixture.putPointer(95);
        fixture.clock.advance(1s);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
        fixture.putPointer(96);
        fixture.clock.advance(100ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(slide);
        QCOMPARE(fixture.frame(), shownFrame);
    }

    void comesBackWhenTheDockHides()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(1s);
        fixture.windowServer.windows = QList<WindowDescription>();
        fixture.clock.advance(100ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
    }

    void theEdgeOfAnotherScreenMeansNothing_data()
    {
        QTest::addColumn<QPointF>("pointer");
        QTest::newRow("bottom edge of the screen to the right") << QPointF(2000, 0);
        QTest::newRow("bottom edge of the screen to the left") << QPointF(-500, 2);
        QTest::newRow("on the screen below") << QPointF(720, -300);
    }

    void theEdgeOfAnotherScreenMeansNothing()
    {
        QFETCH(QPointF, pointer);
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.pointer.place = pointer;
        fixture.clock.advance(5s);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(5s);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void switchingToAlwaysVisibleBringsItBackAtOnce()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.frame(), hiddenFrame);
        fixture.change([](Settings &settings) { settings.visibilityMode = DockVisibilityMode::alwaysVisible; });
        QCOMPARE(fixture.frame(), shownFrame);
    }

    void anIdlePointerCostsNoLookAtTheDock()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.change([](Settings &settings) { settings.showAutoHideNudge = false; });
        fixture.windowServer.setSpaceType(0);
        fixture.controller.show();
        const int opened = fixture.preferences.timesOpened;
        fixture.putPointer(450);
        fixture.clock.advance(1s);
        QCOMPARE(fixture.preferences.timesOpened, opened);
        QCOMPARE(fixture.windowServer.timesListed, 0);
    }

    void aSlideThatIsTurnedRoundGoesOnFromWhereItIs()
    {
        Fixture fixture;
        fixture.useAutoMode(0);
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(100ms);
        fixture.clock.advance(48ms);
        const qreal halfway = fixture.frame().y();
        QVERIFY(halfway < shownFrame.y() && halfway > hiddenFrame.y());
        fixture.putPointer(500);
        fixture.clock.advance(52ms);
        fixture.clock.advance(16ms);
        QVERIFY(fixture.frame().y() > hiddenFrame.y());
        fixture.clock.advance(slide);
        QCOMPARE(fixture.frame(), shownFrame);
    }

    void aFullScreenSpaceSlidesItOut()
    {
        Fixture fixture;
        fixture.show();
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(1s);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        fixture.clock.advance(slide);
        QCOMPARE(fixture.frame(), hiddenFrame);
        fixture.windowServer.setSpaceType(0);
        fixture.clock.advance(1s + slide);
        QCOMPARE(fixture.frame(), shownFrame);
        QVERIFY(!fixture.clock.repeatingIntervals().contains(80ms));
    }

    void startingInAFullScreenSpaceStartsHidden()
    {
        Fixture fixture;
        fixture.windowServer.setSpaceType(4);
        fixture.show();
        QCOMPARE(fixture.frame(), hiddenFrame);
    }

    void aWindowThatTellsOfItselfIsHeardOf()
    {
        Fixture fixture;
        fixture.show();
        fixture.clock.advance(500ms);
        fixture.windowServer.windows = {film()};
        Q_EMIT fixture.windowServer.windowsChanged();
        fixture.clock.advance(99ms);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        fixture.clock.advance(1ms);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void aBurstOfChangesIsLookedAtOnce()
    {
        Fixture fixture;
        fixture.show();
        fixture.clock.advance(500ms);
        const int listed = fixture.windowServer.timesListed;
        for (int i = 0; i < 9; ++i) {
            Q_EMIT fixture.windowServer.windowsChanged();
            fixture.clock.advance(10ms);
        }
        QCOMPARE(fixture.windowServer.timesListed, listed);
        fixture.clock.advance(10ms);
        QCOMPARE(fixture.windowServer.timesListed, listed + 1);
        Q_EMIT fixture.windowServer.windowsChanged();
        fixture.clock.advance(100ms);
        QCOMPARE(fixture.windowServer.timesListed, listed + 2);
    }

    void aDesktopOrADockThatIsClickedEndsNoFilm_data()
    {
        QTest::addColumn<WindowKind>("kind");
        QTest::addColumn<QRectF>("bounds");
        QTest::newRow("desktop over two screens") << WindowKind::desktop << QRectF(0, 0, 2880, 900);
        QTest::newRow("dock") << WindowKind::dock << QRectF(0, 840, 1440, 60);
    }

    void aDesktopOrADockThatIsClickedEndsNoFilm()
    {
        QFETCH(WindowKind, kind);
        QFETCH(QRectF, bounds);
        Fixture fixture;
        fixture.show();
        fixture.windowServer.windows = {film()};
        fixture.clock.advance(1s);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        WindowDescription clicked{
            .ownerProcess = 8, .layer = 0, .bounds = bounds, .kind = kind, .isFullScreen = false, .isActive = true};
        fixture.windowServer.windows = {clicked, film()};
        fixture.clock.advance(2s);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        clicked.kind = WindowKind::normal;
        fixture.windowServer.windows = {clicked, film()};
        fixture.clock.advance(1s);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
    }

    void whileOneReasonRemainsTheBarStaysAway()
    {
        Fixture fixture;
        fixture.useAutoMode(0);
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(500ms);
        fixture.windowServer.setSpaceType(4);
        fixture.change([](Settings &settings) { settings.bottomGap = 3; });
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        // Too high for the dock, not for the peek.
        fixture.putPointer(500);
        fixture.clock.advance(100ms + slide);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        QCOMPARE(fixture.frame(), hiddenFrame);
        fixture.windowServer.setSpaceType(0);
        fixture.clock.advance(1s + slide);
        QCOMPARE(fixture.frame(), QRectF(490, -10, width, 98));
    }

    void theEndOfTheFilmDoesNotBringItBackFromTheDock()
    {
        Fixture fixture;
        fixture.useAutoMode(0);
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(500ms);
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(1s);
        fixture.windowServer.setSpaceType(0);
        fixture.clock.advance(1s + slide);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        QCOMPARE(fixture.frame(), hiddenFrame);
    }

    void aChangeOfTheSettingsResetsTheClockAtTheEdge()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(500ms);
        fixture.change([](Settings &settings) { settings.bottomGap = 3; });
        fixture.clock.advance(500ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(200ms);
        QVERIFY(fixture.controller.isHiddenForSystemDock());
    }

    void thePeekIsLookedForEveryEightyMilliseconds()
    {
        Fixture fixture;
        fixture.show();
        QVERIFY(!fixture.clock.repeatingIntervals().contains(80ms));
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(1s);
        QVERIFY(fixture.clock.repeatingIntervals().contains(80ms));
        fixture.putPointer(3);
        fixture.clock.advance(79ms);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        fixture.clock.advance(1ms);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
    }

    void insideTheZoneTheDockIsOnlyLookedAtAfterTheDelay()
    {
        Fixture fixture;
        fixture.useAutoMode();
        fixture.change([](Settings &settings) { settings.showAutoHideNudge = false; });
        fixture.windowServer.setSpaceType(0);
        fixture.controller.show();
        fixture.clock.advance(1s);
        const int opened = fixture.preferences.timesOpened;
        const int listed = fixture.windowServer.timesListed;
        fixture.putPointer(2);
        // The nudge looks every two seconds as well, but not within this one.
        fixture.clock.advance(590ms);
        QCOMPARE(fixture.preferences.timesOpened, opened);
        QCOMPARE(fixture.windowServer.timesListed, listed);
        fixture.clock.advance(20ms);
        QCOMPARE(fixture.preferences.timesOpened, opened + 1);
        QCOMPARE(fixture.windowServer.timesListed, listed + 1);
    }

    void aBarThatIsHeldDoesNotMakeWayForTheDock()
    {
        Fixture fixture;
        fixture.useAutoMode(0);
        fixture.show();
        BarHolds::Token token = fixture.holds.take();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(1s);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
        QCOMPARE(fixture.frame(), shownFrame);
        token = {};
        QVERIFY(fixture.controller.isHiddenForSystemDock());
        fixture.clock.advance(slide);
        QCOMPARE(fixture.frame(), hiddenFrame);
    }

    void aBarThatIsHeldStaysInAFullScreenSpace()
    {
        Fixture fixture;
        fixture.show();
        BarHolds::Token token = fixture.holds.take();
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(2s);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        token = {};
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void aSpaceThatBecameFullScreenAMomentAgoIsSeenWhenTheBarIsLetGo()
    {
        Fixture fixture;
        fixture.show();
        BarHolds::Token token = fixture.holds.take();
        fixture.windowServer.setSpaceType(4);
        token = {};
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void aBarThatPeeksStaysWhileItIsHeldAndGoesOnPeeking()
    {
        Fixture fixture;
        fixture.show();
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(1s);
        fixture.putPointer(0);
        fixture.clock.advance(80ms);
        BarHolds::Token token = fixture.holds.take();
        fixture.putPointer(500);
        fixture.clock.advance(1s);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        fixture.putPointer(50);
        token = {};
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        fixture.putPointer(500);
        fixture.clock.advance(80ms);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void aBarThatIsAwayMayComeBackWhileItIsHeld()
    {
        Fixture fixture;
        fixture.useAutoMode(0);
        fixture.show();
        fixture.revealSystemDock();
        fixture.putPointer(0);
        fixture.clock.advance(500ms);
        const BarHolds::Token token = fixture.holds.take();
        QVERIFY(fixture.controller.isHiddenForSystemDock());
        fixture.putPointer(500);
        fixture.clock.advance(100ms);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
    }

    void thePanelIsAsHighAsTheBarSaysItIs()
    {
        Fixture fixture;
        fixture.show();
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        // The bar has not looked yet, so it shows no nudge and needs no room for it.
        fixture.change([](Settings &settings) { settings.bottomGap = 3; });
        QCOMPARE(fixture.frame().height(), 98.0);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.frame().height(), 132.0);
    }

    void touchingTheEdgePeeks()
    {
        Fixture fixture;
        fixture.show();
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(2s);
        fixture.putPointer(4);
        fixture.clock.advance(200ms);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        fixture.putPointer(3);
        fixture.clock.advance(80ms);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        fixture.clock.advance(slide);
        QCOMPARE(fixture.frame(), shownFrame);
        fixture.putPointer(101);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.frame(), shownFrame);
        fixture.putPointer(102);
        fixture.clock.advance(80ms + slide);
        QCOMPARE(fixture.frame(), hiddenFrame);
    }

    void showingOverFullScreenAppsKeepsItThere()
    {
        Fixture fixture;
        fixture.show();
        fixture.windowServer.setSpaceType(4);
        fixture.clock.advance(2s);
        QCOMPARE(fixture.frame(), hiddenFrame);
        fixture.change([](Settings &settings) { settings.showOverFullScreenApps = true; });
        QCOMPARE(fixture.panelWindow.behavior, 337U);
        QCOMPARE(fixture.frame(), shownFrame);
        fixture.clock.advance(5s);
        QCOMPARE(fixture.frame(), shownFrame);
        fixture.change([](Settings &settings) { settings.showOverFullScreenApps = false; });
        QCOMPARE(fixture.panelWindow.behavior, 81U);
        QCOMPARE(fixture.frame(), hiddenFrame);
    }

    void aSwitchOfSpacesIsLookedAtOnceItSettled()
    {
        Fixture fixture;
        fixture.show();
        fixture.clock.advance(500ms);
        fixture.windowServer.setSpaceType(4);
        Q_EMIT fixture.workspace.activeSpaceChanged();
        fixture.clock.advance(340ms);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
        fixture.clock.advance(10ms);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void anActivatedApplicationIsLookedAtToo()
    {
        Fixture fixture;
        fixture.show();
        fixture.clock.advance(500ms);
        fixture.windowServer.setSpaceType(4);
        Q_EMIT fixture.workspace.applicationActivated(std::nullopt);
        fixture.clock.advance(350ms);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
    }

    void aControllerThatGoesWhileASpaceSettlesIsNotTouched()
    {
        DockFixture fixture;
        {
            DockWindowController controller(fixture.controllerContext(), fixture.makeBar());
            controller.show();
            Q_EMIT fixture.workspace.activeSpaceChanged();
        }
        fixture.clock.advance(1s);
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void whereTheSystemCannotTellTheWindowsDecide()
    {
        Fixture fixture;
        fixture.show();
        fixture.windowServer.windows = {{QStringLiteral("Player"), 7, 0, QRectF(0, 0, 1440, 900)}};
        fixture.clock.advance(1s);
        QVERIFY(fixture.controller.isHiddenForFullScreen());
        fixture.windowServer.windows->append(
            {QStringLiteral("Window Server"), 8, FakeWindowServer::mainMenuLevel, QRectF(0, 0, 1440, 24)});
        fixture.clock.advance(1s);
        QVERIFY(!fixture.controller.isHiddenForFullScreen());
    }

    void onlyThePillTakesInput()
    {
        Fixture fixture;
        fixture.show();
        const QPainterPath area = fixture.panelWindow.interactiveArea;
        const qreal middle = fixture.panelWindow.widget->width() / 2.0;
        QVERIFY(area.contains(QPointF(middle, 49)));
        QVERIFY(!area.contains(QPointF(middle, 6)));
        QVERIFY(!area.contains(QPointF(middle, 92)));
    }

    void absurdGapsAndDelaysDoNoHarm()
    {
        Fixture fixture;
        fixture.show();
        fixture.change([](Settings &settings) {
            settings.bottomGap = 1e300;
            settings.hideDelaySeconds = -1e300;
            settings.visibilityMode = DockVisibilityMode::hideWhenSystemDockAppears;
        });
        QCOMPARE(fixture.frame(), QRectF(490, 16383, width, 98));
        fixture.clock.advance(5s);
        QVERIFY(!fixture.controller.isHiddenForSystemDock());
    }

    void aDebugRunLogsItsFrames()
    {
        Fixture fixture(true);
        QTest::ignoreMessage(QtInfoMsg,
            QRegularExpression(QStringLiteral(
                R"(^Moorline: requested \(490\.0, -11\.0, 460\.0, 98\.0\) -> actual \(490\.0, -11\.0, 460\.0, 98\.0\) level 21$)")));
        QTest::ignoreMessage(QtInfoMsg,
            QRegularExpression(
                QStringLiteral(R"(^Moorline: tick frame=\(490\.0, -11\.0, 460\.0, 98\.0\) content=\()")));
        fixture.show();
        fixture.clock.advance(1s);
    }
};

MOORLINE_TEST(DockWindowControllerTest);

#include "DockWindowControllerTest.moc"

#include "dock/DockBarView.h"

#include "DockFixture.h"
#include "chrome/MenuRow.h"
#include "chrome/MenuView.h"
#include "dock/AutoHideNudge.h"
#include "dock/DockHostingView.h"
#include "dock/Pill.h"
#include "harness/FontScope.h"
#include "harness/TestCase.h"

#include <QGraphicsSceneContextMenuEvent>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture : DockFixture {
    Fixture()
    {
        change([](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::clock, WidgetKind::monthCounter};
            settings.appShortcuts.clear();
            settings.showDownloadsFolder = settings.showTrash = false;
        });
    }

    std::unique_ptr<DockBarView> make()
    {
        return std::make_unique<DockBarView>(barContext(), [this](qreal width) { widths.append(width); });
    }

    /// What the bar reported, oldest first.
    QList<qreal> widths;
};

template <typename Item>
Item *child(const DockBarView &bar)
{
    for (QGraphicsItem *item : bar.childItems()) {
        if (auto *found = dynamic_cast<Item *>(item))
            return found;
    }
    return nullptr;
}

} // namespace

class DockBarViewTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void showsTheEnabledWidgetsInTheirOrder()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        QCOMPARE(bar->row(), (QList<WidgetKind>{WidgetKind::clock, WidgetKind::monthCounter}));
        fixture.change([](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::monthCounter, WidgetKind::calendar, WidgetKind::clock};
        });
        QCOMPARE(bar->row(), (QList<WidgetKind>{WidgetKind::monthCounter, WidgetKind::calendar, WidgetKind::clock}));
    }

    void aChangeOfOtherSettingsKeepsTheWidgets()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        const auto *first = child<Pill>(*bar)->row().first().widget;
        fixture.change([](Settings &settings) { settings.bottomGap = 9; });
        QCOMPARE(child<Pill>(*bar)->row().first().widget, first);
    }

    void reportsTheWidthOfThePill()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        QCOMPARE(fixture.widths.last(), child<Pill>(*bar)->size().width());
        const qreal before = fixture.widths.last();
        fixture.widgets[WidgetKind::clock]->setNaturalSize({110, 40});
        QVERIFY(fixture.widths.last() > before);
        fixture.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
        QVERIFY(fixture.widths.last() < before);
    }

    void theNudgeIsMeasuredAnewInAnotherFont()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        QGraphicsScene scene;
        DockBarView *bar = fixture.make().release();
        scene.addItem(bar);
        bar->setGeometry(QRectF(0, 0, 1200, 140));
        QCoreApplication::processEvents();
        const auto *nudge = child<AutoHideNudge>(*bar);
        const qreal before = nudge->naturalWidth();
        QCOMPARE(fixture.widths.last(), before);
        const FontScope another;
        QVERIFY(nudge->naturalWidth() != before);
        QCOMPARE(fixture.widths.last(), nudge->naturalWidth());
        QCOMPARE(nudge->size().width(), nudge->naturalWidth());
        const QRectF button = barItems(*nudge).first()->geometry();
        QCOMPARE(button.right(), nudge->size().width() - 12);
    }

    void theBodyStandsAtTheBottomCentred()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        const Pill *pill = child<Pill>(*bar);
        bar->setGeometry(QRectF(0, 0, 801, 132));
        QCOMPARE(pill->y(), 132.0 - 13 - 72);
        QVERIFY(qAbs(pill->geometry().center().x() - 400.5) <= 0.5);
    }

    void withoutIconsTheIconSizeIsTheLargest()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        QCOMPARE(bar->iconSize(), 46.0);
        QVERIFY(!bar->row().contains(WidgetKind::pinnedItems));
    }

    void theNudgeShowsWhileTheDockLiesUnderneath()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        const auto bar = fixture.make();
        QVERIFY(bar->isNudgeShown());
        QCOMPARE(bar->bodyHeight(), 132.0);
        bar->setGeometry(QRectF(0, 0, 900, 132));
        const auto *nudge = child<AutoHideNudge>(*bar);
        QVERIFY(nudge->isVisibleTo(bar.get()));
        QCOMPARE(nudge->y(), 13.0);
        QCOMPARE(nudge->size().height(), 26.0);
        fixture.change([](Settings &settings) { settings.showAutoHideNudge = false; });
        QVERIFY(!bar->isNudgeShown());
        QVERIFY(!nudge->isVisibleTo(bar.get()));
    }

    void theNudgeGoesAtTheNextRoundWhenTheDockMovesToTheSide()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        const auto bar = fixture.make();
        bar->appear();
        QSignalSpy heights(bar.get(), &DockBarView::bodyHeightChanged);
        fixture.preferences.setDock(QStringLiteral("left"), false);
        fixture.clock.advance(1900ms);
        QVERIFY(bar->isNudgeShown());
        fixture.clock.advance(100ms);
        QVERIFY(!bar->isNudgeShown());
        QCOMPARE(heights.size(), 1);
        fixture.clock.advance(10s);
        QCOMPARE(heights.size(), 1);
    }

    void aDockThatCannotBeAskedCounts()
    {
        Fixture fixture;
        fixture.preferences.domains.clear();
        QVERIFY(fixture.make()->isNudgeShown());
    }

    void thePanelIsAskedToBeWideEnoughForTheNudge()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        const auto bar = fixture.make();
        QCOMPARE(fixture.widths.last(), child<AutoHideNudge>(*bar)->naturalWidth());
        QVERIFY(fixture.widths.last() > child<Pill>(*bar)->size().width());
    }

    void theButtonOfTheNudgeHidesTheDock()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        const auto bar = fixture.make();
        Q_EMIT child<AutoHideNudge>(*bar)->accepted();
        QCOMPARE(fixture.systemDockControl.timesAutoHideEnabled, 1);
        QVERIFY(fixture.systemSettings.opened.isEmpty());
    }

    void whereTheDockRefusesItsSettingsOpen()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        fixture.systemDockControl.succeeds = false;
        const auto bar = fixture.make();
        Q_EMIT child<AutoHideNudge>(*bar)->accepted();
        QCOMPARE(fixture.systemSettings.opened, QList<SettingsPane>{SettingsPane::desktopAndDock});
    }

    void aRowWithoutWidgetsHasAWidthToo()
    {
        Fixture fixture;
        fixture.change([](Settings &settings) { settings.enabledWidgets.clear(); });
        const auto bar = fixture.make();
        QVERIFY(bar->row().isEmpty());
        QCOMPARE(fixture.widths, QList<qreal>{36.0});
    }

    void musicThatIsToldNeverToHideShowsAtTheNextRound()
    {
        Fixture fixture;
        fixture.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock, WidgetKind::music}; });
        const auto bar = fixture.make();
        bar->appear();
        QVERIFY(!bar->visibleWidgets().contains(WidgetKind::music));
        fixture.change([](Settings &settings) { settings.hideMusicWhenIdle = false; });
        fixture.clock.advance(2s);
        QVERIFY(bar->visibleWidgets().contains(WidgetKind::music));
    }

    void musicComesAndGoesWithPlayback()
    {
        Fixture fixture;
        fixture.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::music}; });
        const auto bar = fixture.make();
        bar->appear();
        fixture.playback = {true, fixture.clock.now()};
        fixture.clock.advance(2s);
        QVERIFY(bar->visibleWidgets().contains(WidgetKind::music));
        fixture.playback = {false, fixture.clock.now()};
        fixture.clock.advance(4min + 58s);
        QVERIFY(bar->visibleWidgets().contains(WidgetKind::music));
        fixture.clock.advance(4s);
        QVERIFY(!bar->visibleWidgets().contains(WidgetKind::music));
    }

    void recentApplicationsComeAndGoAsTheyAreTold()
    {
        Fixture fixture;
        fixture.change([](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::clock, WidgetKind::recentApps};
        });
        fixture.recentApps = 2;
        const auto bar = fixture.make();
        QCOMPARE(bar->row(), (QList{WidgetKind::clock, WidgetKind::recentApps}));
        fixture.recentApps = 0;
        bar->recentAppsChanged();
        QCOMPARE(bar->row(), QList{WidgetKind::clock});
        fixture.recentApps = 1;
        bar->recentAppsChanged();
        QCOMPARE(bar->row(), (QList{WidgetKind::clock, WidgetKind::recentApps}));
    }

    void theTaskRunsOnlyWhileTheBarShows()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        QVERIFY(!fixture.clock.repeatingIntervals().contains(2s));
        bar->appear();
        QVERIFY(fixture.clock.repeatingIntervals().contains(2s));
        bar->disappear();
        QVERIFY(!fixture.clock.repeatingIntervals().contains(2s));
    }

    void inputIsTakenOnThePillAndTheNudgeAlone()
    {
        Fixture fixture;
        fixture.preferences.setDock(QStringLiteral("bottom"), false);
        const auto bar = fixture.make();
        bar->setGeometry(QRectF(0, 0, 900, 132));
        const QPainterPath area = bar->interactiveArea();
        QVERIFY(area.contains(QPointF(450, 26)));
        QVERIFY(area.contains(QPointF(450, 80)));
        QVERIFY(!area.contains(QPointF(450, 43)));
        QVERIFY(!area.contains(QPointF(450, 6)));
        QVERIFY(!area.contains(QPointF(450, 125)));
        QVERIFY(!area.contains(QPointF(2, 80)));
    }

    void aRightClickOnThePillOpensTheMenu()
    {
        Fixture fixture;
        DockHostingView view(fixture.make());
        view.resize(600, 98);
        view.show();
        fixture.panelWindow.frames = {QRectF(420, -11, 600, 98)};
        QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(310, 49), QPoint(310, 49));
        QCoreApplication::sendEvent(view.viewport(), &press);
        QCOMPARE(fixture.popupWindows.shown.size(), 1);
        const auto *menu = qobject_cast<const MenuView *>(fixture.popupWindows.shown.first());
        QVERIFY(menu);
        QCOMPARE(menu->rows().size(), 4);
        // Above the pointer, six points above the pill.
        QVERIFY(std::abs(menu->frame().center().x() - 730) <= 0.5);
        QCOMPARE(menu->frame().top(), 80.0);
    }

    void aRightClickBesideThePillOpensNothing()
    {
        Fixture fixture;
        DockHostingView view(fixture.make());
        view.resize(600, 98);
        view.show();
        QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(300, 5), QPoint(300, 5));
        QCoreApplication::sendEvent(view.viewport(), &press);
        QVERIFY(fixture.popupWindows.shown.isEmpty());
    }

    void droppedFilesArePinned()
    {
        Fixture fixture;
        const auto bar = fixture.make();
        Q_EMIT child<Pill>(*bar)->filesDropped({QUrl::fromLocalFile(QStringLiteral("/tmp/notes.txt"))});
        const QList<PinnedItem> expected{{QStringLiteral("/tmp/notes.txt"), QStringLiteral("notes.txt")}};
        QCOMPARE(fixture.store.settings().pinnedItems, expected);
    }
};

MOORLINE_TEST(DockBarViewTest);

#include "DockBarViewTest.moc"

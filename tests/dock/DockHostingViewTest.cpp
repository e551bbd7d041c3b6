#include "dock/DockHostingView.h"

#include "DockFixture.h"
#include "chrome/BarWidget.h"
#include "chrome/HelpTag.h"
#include "chrome/MenuRow.h"
#include "chrome/MenuView.h"
#include "chrome/Popover.h"
#include "harness/TestCase.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QToolTip>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

constexpr QPoint onTheWidget(300, 49);
constexpr QPoint besideThePill(20, 49);
/// Where there is a clock to the left of it.
constexpr QPoint onTheCalendar(330, 49);

/// As large as the widget it stands in.
class TrialIcon final : public BarItem {
public:
    explicit TrialIcon(QGraphicsWidget *widget)
        : BarItem(widget)
    {
        setGeometry(widget->rect());
    }

    using BarItem::setHelpText;
};

/// A bar with one widget, which has something to tell.
struct Stage : DockFixture {
    Stage()
    {
        change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
        makeView();
    }

    void makeView()
    {
        view = std::make_unique<DockHostingView>(std::make_unique<DockBarView>(barContext(), [](qreal) {}));
        view->resize(600, 98);
        panelWindow.frames = {QRectF(100, -11, 600, 98)};
        view->show();
    }

    [[nodiscard]] const HelpTag &tag() const { return stage.helpTag(); }

    void move(const QPoint &place, Qt::MouseButtons held = Qt::NoButton)
    {
        QMouseEvent event(
            QEvent::MouseMove, place, view->viewport()->mapToGlobal(place), Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    /// The right one of two widgets.
    void restOnTheCalendar()
    {
        change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock, WidgetKind::calendar}; });
        // The panel begins 100 points from the left, and ends 87 above the bottom of the screen.
        pointer.place = {100.0 + onTheCalendar.x(), 87.0 - onTheCalendar.y()};
        view->viewport()->setAttribute(Qt::WA_UnderMouse);
        QCoreApplication::processEvents();
        rest(onTheCalendar);
        QCOMPARE(tag().text(), QStringLiteral("calendar"));
        QVERIFY(widgets[WidgetKind::calendar]->isHovered());
    }
    /// So far that the other one moves away from below the pointer.
    void widenTheClock()
    {
        widgets[WidgetKind::clock]->setNaturalSize({200, 40});
        QCoreApplication::processEvents();
    }
    /// Long enough to be told something.
    void rest(const QPoint &place)
    {
        move(place);
        clock.advance(700ms);
    }
    void rightClick(const QPoint &place)
    {
        pressForMenu(place);
        sendRightButton(QEvent::MouseButtonRelease, place, Qt::NoButton);
    }
    /// In the order in which Qt tells of it.
    void secondRightClick(const QPoint &place)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &event);
        sendRightButton(QEvent::MouseButtonDblClick, place, Qt::RightButton);
        sendRightButton(QEvent::MouseButtonRelease, place, Qt::NoButton);
    }
    void pressForMenu(const QPoint &place)
    {
        // QTest's own would take it for a mistake that the scene has no use for the press.
        sendRightButton(QEvent::MouseButtonPress, place, Qt::RightButton);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    void sendRightButton(QEvent::Type type, const QPoint &place, Qt::MouseButtons held)
    {
        QMouseEvent event(type, place, view->viewport()->mapToGlobal(place), Qt::RightButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    [[nodiscard]] const MenuView &menu() const { return *qobject_cast<MenuView *>(popupWindows.shown.value(0)); }
    /// The middle of a row of the menu, in the coordinates of the view.
    [[nodiscard]] QPoint placeOf(const MenuRow &row) const
    {
        const QRectF frame = menu().frame();
        return {int(frame.center().x()) - 100, -11 + 98 - int(frame.bottom()) + row.geometry().center().y()};
    }
    void send(QEvent::Type type)
    {
        QEvent event(type);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }

    std::unique_ptr<DockHostingView> view;
};

} // namespace

class DockHostingViewTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aRestingPointerIsToldAboutTheWidget()
    {
        Stage stage;
        stage.move(onTheWidget);
        stage.clock.advance(699ms);
        QVERIFY(!stage.tag().isVisible());
        stage.clock.advance(1ms);
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("clock"));
        const QRectF tag = stage.tag().frame();
        // Six points above the pill, which begins 13 points below the top of the panel.
        QCOMPARE(tag.top(), -11.0 + 98 - 13 + 6);
        QVERIFY(std::abs(tag.center().x() - (100 + onTheWidget.x())) <= 2);
    }

    void aPointerThatComesAndDoesNotMoveIsToldToo()
    {
        Stage stage;
        QEnterEvent event(onTheWidget, onTheWidget, stage.view->viewport()->mapToGlobal(onTheWidget));
        QCoreApplication::sendEvent(stage.view->viewport(), &event);
        stage.clock.advance(700ms);
        QVERIFY(stage.tag().isVisible());
    }

    void aMovingPointerIsNotDisturbed()
    {
        Stage stage;
        for (int i = 0; i < 10; ++i) {
            stage.move(onTheWidget + QPoint(i % 2, 0));
            stage.clock.advance(600ms);
        }
        QVERIFY(!stage.tag().isVisible());
    }

    void aPointerThatLeftIsToldNothing()
    {
        Stage stage;
        stage.move(onTheWidget);
        stage.send(QEvent::Leave);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void theSystemsOwnTooltipIsNotShown()
    {
        Stage stage;
        QHelpEvent event(QEvent::ToolTip, onTheWidget, stage.view->viewport()->mapToGlobal(onTheWidget));
        QVERIFY(QCoreApplication::sendEvent(stage.view->viewport(), &event));
        QVERIFY(!QToolTip::isVisible());
    }

    void nothingIsToldBesideTheWidgets()
    {
        Stage stage;
        stage.move(besideThePill);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void movingWithinTheWidgetKeepsTheTag()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.move(onTheWidget + QPoint(3, 3));
        QVERIFY(stage.tag().isVisible());
        stage.move(besideThePill);
        QVERIFY(!stage.tag().isVisible());
    }

    void theNextTagComesAtOnce()
    {
        Stage stage;
        stage.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock, WidgetKind::calendar}; });
        const int middle = stage.view->width() / 2;
        stage.rest({middle - 40, 49});
        QCOMPARE(stage.tag().text(), QStringLiteral("clock"));
        stage.move({middle + 50, 49});
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("calendar"));
    }

    void aPointerThatRestsIsOnWhatComesBelowIt()
    {
        Stage stage;
        stage.restOnTheCalendar();
        stage.widenTheClock();
        QVERIFY(!stage.widgets[WidgetKind::calendar]->isHovered());
        QVERIFY(stage.widgets[WidgetKind::clock]->isHovered());
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("clock"));
        QVERIFY(std::abs(stage.tag().frame().center().x() - (100 + 243)) <= 2);
    }

    void theTagStaysAboveItsWidgetWhereverThatMoves()
    {
        Stage stage;
        stage.restOnTheCalendar();
        stage.widgets[WidgetKind::clock]->setNaturalSize({90, 40});
        QCoreApplication::processEvents();
        QCOMPARE(stage.tag().text(), QStringLiteral("calendar"));
        QVERIFY(std::abs(stage.tag().frame().center().x() - (100 + 357)) <= 2);
    }

    void theTagGoesWithTheWidgetThatWasBelowThePointer()
    {
        Stage stage;
        stage.restOnTheCalendar();
        stage.change([](Settings &settings) { settings.enabledWidgets.clear(); });
        QCoreApplication::processEvents();
        QVERIFY(!stage.tag().isVisible());
    }

    void aRowThatChangesBringsNoTag()
    {
        Stage stage;
        stage.restOnTheCalendar();
        stage.sendRightButton(QEvent::MouseButtonPress, onTheCalendar, Qt::RightButton);
        stage.sendRightButton(QEvent::MouseButtonRelease, onTheCalendar, Qt::NoButton);
        QVERIFY(!stage.tag().isVisible());
        stage.widenTheClock();
        QVERIFY(!stage.tag().isVisible());
    }

    void whileAMenuIsOpenThePointerStaysOnWhatItWas()
    {
        Stage stage;
        stage.restOnTheCalendar();
        TrialWidget *calendar = stage.widgets[WidgetKind::calendar];
        stage.stage.openMenu(*calendar, {{.title = QStringLiteral("Row"), .action = [] {}}});
        stage.widenTheClock();
        QVERIFY(calendar->isHovered());
        QVERIFY(!stage.widgets[WidgetKind::clock]->isHovered());
    }

    void whileAButtonIsHeldThePointerStaysOnWhatItWas()
    {
        Stage stage;
        stage.restOnTheCalendar();
        stage.pointer.buttons = Qt::LeftButton;
        stage.widenTheClock();
        QVERIFY(stage.widgets[WidgetKind::calendar]->isHovered());
        QVERIFY(!stage.widgets[WidgetKind::clock]->isHovered());
    }

    void aPointerThatLeftComesBackOnlyByItself()
    {
        Stage stage;
        stage.restOnTheCalendar();
        stage.send(QEvent::Leave);
        stage.view->viewport()->setAttribute(Qt::WA_UnderMouse, false);
        stage.widenTheClock();
        QVERIFY(!stage.widgets[WidgetKind::clock]->isHovered());
    }

    void whatAWidgetDoesWhenItIsHoveredIsNotLookedAtAgain()
    {
        Stage stage;
        stage.restOnTheCalendar();
        int hovers = 0;
        TrialWidget *widget = stage.widgets[WidgetKind::clock];
        QObject::connect(widget, &BarItem::hoveredChanged, widget, [widget, &hovers] {
            ++hovers;
            widget->setNaturalSize(widget->isHovered() ? QSizeF(40, 40) : QSizeF(200, 40));
        });
        stage.widenTheClock();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QCOMPARE(hovers, 1);
    }

    void aPointerThatHoldsAButtonIsToldNothing()
    {
        Stage stage;
        stage.move(onTheWidget, Qt::LeftButton);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagFollowsItsWidget()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.widgets[WidgetKind::clock]->setHelpText(QStringLiteral("Clear\nFeels like 3°"));
        QCOMPARE(stage.tag().text(), QStringLiteral("Clear\nFeels like 3°"));
        QVERIFY(stage.tag().isVisible());
    }

    void theTagFollowsAnItemWithinAWidget()
    {
        Stage stage;
        auto *icon = new TrialIcon(stage.widgets[WidgetKind::clock]);
        icon->setHelpText(QStringLiteral("Mail"));
        stage.rest(onTheWidget);
        QCOMPARE(stage.tag().text(), QStringLiteral("Mail"));
        icon->setHelpText(QStringLiteral("Mail (3)"));
        QCOMPARE(stage.tag().text(), QStringLiteral("Mail (3)"));
    }

    void theTagOutlivesItsWidget()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.change([](Settings &settings) { settings.enabledWidgets.clear(); });
        stage.move(onTheWidget);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagGoesWithThePointer()
    {
        for (const QEvent::Type type : {QEvent::Leave, QEvent::MouseButtonPress}) {
            Stage stage;
            stage.rest(onTheWidget);
            if (type == QEvent::Leave)
                stage.send(type);
            else
                QTest::mousePress(stage.view->viewport(), Qt::LeftButton, {}, onTheWidget);
            QVERIFY(!stage.tag().isVisible());
        }
    }

    void theTagGoesWithTheBar()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.view->hide();
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagGoesByItself()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.clock.advance(9900ms);
        QVERIFY(stage.tag().isVisible());
        stage.clock.advance(100ms);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagKeepsToTheScreen()
    {
        Stage stage;
        for (const qreal x : {-300.0, 1140.0}) {
            stage.panelWindow.frames = {QRectF(x, -11, 600, 98)};
            stage.rest(onTheWidget);
            QVERIFY2(QRectF(0, 0, 1440, 900).contains(stage.tag().frame()), qPrintable(QString::number(x)));
            stage.send(QEvent::Leave);
        }
    }

    void theRightButtonOpensTheMenuAndClosesItAgain()
    {
        Stage stage;
        stage.rightClick(onTheWidget);
        QVERIFY(qobject_cast<MenuView *>(stage.popupWindows.shown.value(0)));
        stage.rightClick(onTheWidget + QPoint(20, 0));
        QCOMPARE(stage.popupWindows.shown.size(), 1);
        QVERIFY(stage.stage.isOpen());
        QTest::mouseClick(stage.view->viewport(), Qt::LeftButton, {}, onTheWidget);
        QVERIFY(!stage.stage.isOpen());
    }

    void aPressThatIsLedIntoTheMenuChooses()
    {
        Stage stage;
        int quits = 0;
        stage.commands.quit = [&quits] { ++quits; };
        stage.makeView();
        stage.pressForMenu(onTheWidget);
        const MenuRow *row = stage.menu().rows().last();
        const QPoint place = stage.placeOf(*row);
        stage.move(place, Qt::RightButton);
        QVERIFY(row->isHighlighted());
        stage.sendRightButton(QEvent::MouseButtonRelease, place, Qt::NoButton);
        QCOMPARE(quits, 1);
        QVERIFY(!stage.stage.isOpen());
    }

    void aPointerWithoutAButtonHighlightsNothingFromOutside()
    {
        Stage stage;
        stage.rightClick(onTheWidget);
        const MenuRow *row = stage.menu().rows().last();
        stage.move(stage.placeOf(*row));
        QVERIFY(!row->isHighlighted());
    }

    void theSecondRightPressInShortOrderIsLikeTheFirst()
    {
        Stage stage;
        for (const bool isOpen : {false, true}) {
            stage.rightClick(onTheWidget);
            if (!isOpen)
                stage.stage.close();
            stage.secondRightClick(onTheWidget);
            QVERIFY(stage.stage.isOpen());
            QCOMPARE(stage.popupWindows.shown.size(), 1);
            stage.stage.close();
        }
    }

    void aSecondRightPressAfterOneThatOnlyClosedOpensTheMenu()
    {
        Stage stage;
        stage.stage.openPopover(*stage.widgets[WidgetKind::clock], std::make_unique<PopoverContent>());
        stage.rightClick(onTheWidget);
        QVERIFY(!stage.stage.isOpen());
        stage.secondRightClick(onTheWidget);
        QVERIFY(stage.stage.isOpen());
    }

    void aPressThatOnlyClosesTheMenuReachesNoWidget()
    {
        Stage stage;
        const QSignalSpy clicks(stage.widgets[WidgetKind::clock], &BarItem::clicked);
        QTest::mouseClick(stage.view->viewport(), Qt::LeftButton, {}, onTheWidget);
        QCOMPARE(clicks.size(), 1);
        stage.rightClick(onTheWidget);
        QTest::mouseClick(stage.view->viewport(), Qt::LeftButton, {}, onTheWidget);
        QCOMPARE(clicks.size(), 1);
        QTest::mouseClick(stage.view->viewport(), Qt::LeftButton, {}, onTheWidget);
        QCOMPARE(clicks.size(), 2);
    }

    void aRightPressOnThePopoversAnchorOpensNoMenu()
    {
        Stage stage;
        stage.stage.openPopover(*stage.widgets[WidgetKind::clock], std::make_unique<PopoverContent>());
        stage.rightClick(onTheWidget);
        QVERIFY(!stage.stage.isOpen());
        stage.rightClick(onTheWidget);
        QVERIFY(stage.stage.isOpen());
    }

    void theMenuGoesWithTheBar()
    {
        Stage stage;
        stage.rightClick(onTheWidget);
        stage.view->hide();
        QVERIFY(!stage.stage.isOpen());
    }

    void nothingIsToldWhileAMenuIsOpen()
    {
        Stage stage;
        stage.rightClick(onTheWidget);
        stage.rest(onTheWidget);
        QVERIFY(!stage.tag().isVisible());
    }
};

MOORLINE_TEST(DockHostingViewTest);

#include "DockHostingViewTest.moc"

#include "chrome/BarStage.h"

#include "StageFixture.h"
#include "chrome/BarDrag.h"
#include "harness/TestCase.h"

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// Acts when a window is hidden.
class OnHide final : public QObject {
public:
    OnHide(QWidget &window, std::function<void()> act)
        : m_act(std::move(act))
    {
        window.installEventFilter(this);
    }

    [[nodiscard]] int times() const { return m_times; }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Hide && m_times++ == 0)
            m_act();
        return false;
    }

private:
    std::function<void()> m_act;
    int m_times = 0;
};

} // namespace

class BarStageTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPopoverStandsAboveItsAnchor()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        QVERIFY(fixture.stage.isOpen());
        QVERIFY(fixture.stage.isOpenAt(*fixture.icon));
        QVERIFY(!fixture.stage.isOpenAt(*fixture.other));
        // The icon's middle is 303 points into the panel; the pill's upper edge is 13 points below that of the panel.
        QCOMPARE(fixture.open()->frame(), QRectF(420 + 303 - 100, -11 + 98 - 13 + 6, 200, 150));
    }

    void aMenuStandsAboveThePlaceItWasAskedForAt()
    {
        StageFixture fixture;
        fixture.stage.openMenu({*fixture.icon, QRectF(3, 40, 0, 0)}, fixture.menu());
        QCOMPARE(fixture.open()->frame().center().x(),
            std::round(420 + 283 - fixture.open()->width() / 2.0) + fixture.open()->width() / 2.0);
        QCOMPARE(fixture.open()->frame().top(), 80.0);
    }

    void whatIsOpenKeepsTheBarWhereItIs()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        QVERIFY(fixture.holds.isHeld());
        fixture.stage.openMenu(*fixture.other, fixture.menu());
        QVERIFY(fixture.holds.isHeld());
        fixture.stage.close();
        QVERIFY(!fixture.holds.isHeld());
    }

    void openingAnotherClosesTheFirst()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        const QPointer<BarPopup> first = fixture.open();
        fixture.stage.openMenu(*fixture.other, fixture.menu());
        QCOMPARE(fixture.windows.shown.size(), 1);
        QVERIFY(fixture.open() != first);
        QVERIFY(fixture.stage.isOpenAt(*fixture.other));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!first);
    }

    void askingTwiceCloses()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.openPopover(*fixture.icon);
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(fixture.windows.shown.isEmpty());
        fixture.openPopover(*fixture.icon);
        QVERIFY(fixture.stage.isOpen());
    }

    void aPlaceOnAnItemIsNotPressedAgain()
    {
        StageFixture fixture;
        for (int round = 0; round < 2; ++round) {
            fixture.stage.openMenu({*fixture.icon, QRectF(3, 40, 0, 0)}, fixture.menu());
            QVERIFY(fixture.stage.isOpen());
        }
        QVERIFY(!fixture.stage.takesPress({283, 66}, Qt::RightButton));
        QVERIFY(!fixture.stage.isOpen());
    }

    void aMenuAtAnotherPlaceOfTheSameItemOpensThere()
    {
        StageFixture fixture;
        fixture.stage.openMenu({*fixture.icon, QRectF(3, 40, 0, 0)}, fixture.menu());
        const QRectF first = fixture.open()->frame();
        fixture.stage.openMenu({*fixture.icon, QRectF(33, 40, 0, 0)}, fixture.menu());
        QCOMPARE(fixture.open()->frame(), first.translated(30, 0));
    }

    void theKeyboardIsTakenOnlyWhereItIsNeeded()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon, false);
        QVERIFY(!fixture.windows.keyboardOwner);
        fixture.openPopover(*fixture.other, true);
        QCOMPARE(fixture.windows.keyboardOwner, fixture.open());
        fixture.stage.close();
        QVERIFY(!fixture.windows.keyboardOwner);
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        QCOMPARE(fixture.windows.keyboardOwner, fixture.open());
    }

    void theKeyboardIsTheContents()
    {
        StageFixture fixture;
        const TestContent &content = fixture.openPopover(*fixture.icon, true);
        QCOMPARE(fixture.open()->focusWidget(), &content);
    }

    void escapeCloses()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon, true);
        QTest::keyClick(fixture.open(), Qt::Key_A);
        QVERIFY(fixture.stage.isOpen());
        QTest::keyClick(fixture.open(), Qt::Key_Escape);
        QVERIFY(!fixture.stage.isOpen());
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        QTest::keyClick(fixture.open(), Qt::Key_Escape);
        QVERIFY(!fixture.stage.isOpen());
    }

    void escapeClosesAlsoWhatLeavesTheKeyboard()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon, false);
        fixture.windows.pressEscape();
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(fixture.windows.escapeWatches.empty());
    }

    void whatHasTheKeyboardLeavesEscapeToIt()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon, true);
        QVERIFY(fixture.windows.escapeWatches.empty());
        fixture.stage.openMenu(*fixture.other, fixture.menu());
        QVERIFY(fixture.windows.escapeWatches.empty());
        // What a drag needs goes with the drag.
        fixture.openPopover(*fixture.icon, false);
        fixture.stage.beginDrag().reset();
        QCOMPARE(fixture.windows.escapeWatches.size(), 1U);
    }

    void aPressElsewhereCloses()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.windows.press(fixture.open()->frame().center());
        QVERIFY(fixture.stage.isOpen());
        fixture.windows.press({10, 800});
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(fixture.windows.watches.empty());
    }

    void aPressOnTheBarIsTheBarsToTell()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        // Of the panel, the bar begins 80 points from the left and 13 from the top.
        fixture.windows.press({420 + 81, 73});
        QVERIFY(fixture.stage.isOpen());
        fixture.windows.press({420 + 79, 73});
        QVERIFY(!fixture.stage.isOpen());
    }

    void aPressOnTheAnchorOnlyCloses()
    {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            StageFixture fixture;
            fixture.openPopover(*fixture.icon);
            QVERIFY(fixture.stage.takesPress({300, 50}, button));
            QVERIFY(!fixture.stage.isOpen());
            QVERIFY(!fixture.stage.takesPress({300, 50}, button));
        }
    }

    void aPressBesideTheAnchorClosesAndGoesOn()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        QVERIFY(!fixture.stage.takesPress({400, 50}, Qt::LeftButton));
        QVERIFY(!fixture.stage.isOpen());
    }

    void aLeftPressBesideAMenuOnlyCloses()
    {
        StageFixture fixture;
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        QVERIFY(fixture.stage.takesPress({400, 50}, Qt::LeftButton));
        QVERIFY(!fixture.stage.isOpen());
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        QVERIFY(!fixture.stage.takesPress({400, 50}, Qt::RightButton));
        QVERIFY(!fixture.stage.isOpen());
    }

    void aMenuIsChosenFromInTheGestureThatOpenedIt()
    {
        StageFixture fixture;
        const MenuView &menu = fixture.openOwnMenu(*fixture.icon);
        fixture.stage.leadPointer(fixture.inScene(*menu.rows()[0]));
        QVERIFY(menu.rows()[0]->isHighlighted());
        fixture.stage.leadPointer(fixture.inScene(*menu.rows()[2]));
        QVERIFY(!menu.rows()[0]->isHighlighted());
        QVERIFY(menu.rows()[2]->isHighlighted());
        fixture.stage.letPointerGo(fixture.inScene(*menu.rows()[2]));
        QCOMPARE(fixture.chosen, QStringList{QStringLiteral("Quit")});
        QVERIFY(!fixture.stage.isOpen());
    }

    void aPointerThatIsLetGoAtOnceLeavesTheMenu()
    {
        StageFixture fixture;
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        fixture.stage.leadPointer({305, 45});
        fixture.stage.letPointerGo({305, 45});
        QVERIFY(fixture.stage.isOpen());
    }

    void aPointerThatComesBackFromTheMenuClosesIt()
    {
        StageFixture fixture;
        const MenuView &menu = fixture.openOwnMenu(*fixture.icon);
        fixture.stage.leadPointer(fixture.inScene(*menu.rows()[0]));
        fixture.stage.leadPointer({305, 45});
        QVERIFY(!menu.rows()[0]->isHighlighted());
        fixture.stage.letPointerGo({305, 45});
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(fixture.chosen.isEmpty());
        // The next menu knows nothing of it.
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        fixture.stage.letPointerGo({305, 45});
        QVERIFY(fixture.stage.isOpen());
    }

    void whatCannotBeChosenIsNotChosenInAGesture()
    {
        StageFixture fixture;
        const MenuView &menu = fixture.openOwnMenu(*fixture.icon);
        fixture.stage.leadPointer(fixture.inScene(*menu.rows()[1]));
        QVERIFY(!menu.rows()[1]->isHighlighted());
        fixture.stage.letPointerGo(fixture.inScene(*menu.rows()[1]));
        QVERIFY(fixture.stage.isOpen());
        QVERIFY(fixture.chosen.isEmpty());
    }

    void theEdgesOfTheMenuAreItsOwn()
    {
        StageFixture fixture;
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        const QRectF frame = fixture.open()->frame();
        const qreal left = frame.left() - fixture.panelFrame.left();
        const qreal top = fixture.panelFrame.bottom() - frame.bottom();
        for (const QPointF beside : {QPointF(left - 0.5, top + 1), QPointF(left + 1, top - 0.5)}) {
            fixture.stage.leadPointer(beside);
            fixture.stage.letPointerGo(beside);
            QVERIFY(fixture.stage.isOpen());
        }
        // Where it was before counts with the first point that is inside.
        fixture.stage.leadPointer({left + 0.5, top + 0.5});
        fixture.stage.letPointerGo({left - 0.5, top + 1});
        QVERIFY(!fixture.stage.isOpen());
    }

    void aPopoverIsNoMenuToBeLedThrough()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        const QRectF frame = fixture.open()->frame();
        fixture.stage.leadPointer({frame.center().x() - fixture.panelFrame.left(), -50});
        fixture.stage.letPointerGo({305, 45});
        QVERIFY(fixture.stage.isOpen());
    }

    void contentThatIsDoneCloses()
    {
        StageFixture fixture;
        TestContent &content = fixture.openPopover(*fixture.icon);
        Q_EMIT content.finished();
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!fixture.holds.isHeld());
    }

    void choosingClosesFirstAndActsThen()
    {
        StageFixture fixture;
        bool wasHeld = true;
        bool hadKeyboard = true;
        fixture.stage.openMenu(*fixture.icon, {{.title = QStringLiteral("Quit"), .action = [&] {
                                                    wasHeld = fixture.holds.isHeld();
                                                    hadKeyboard = fixture.windows.keyboardOwner;
                                                }}});
        auto *menu = qobject_cast<MenuView *>(fixture.open());
        QTest::mouseClick(menu->rows().first(), Qt::LeftButton);
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!wasHeld);
        QVERIFY(!hadKeyboard);
    }

    void whatBelongsToSomethingThatGoesGoesToo()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.icon->hide();
        QVERIFY(!fixture.stage.isOpen());
        fixture.openPopover(*fixture.other);
        delete fixture.other;
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!fixture.holds.isHeld());
    }

    void anAnchorThatIsLeftAloneIsForgotten()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.openPopover(*fixture.other);
        fixture.icon->hide();
        QVERIFY(fixture.stage.isOpen());
    }

    void aChangeOfTheScreensCloses()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.screens.set({FakeScreens::screen({0, 0, 1280, 800})});
        QVERIFY(!fixture.stage.isOpen());
    }

    void withoutAScreenNothingOpens()
    {
        StageFixture fixture;
        fixture.screens.set({});
        fixture.openPopover(*fixture.icon);
        fixture.stage.showHelp(*fixture.icon, QStringLiteral("Mail"));
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(fixture.windows.shown.isEmpty());
        QVERIFY(!fixture.holds.isHeld());
    }

    void theSizeFollowsTheContent()
    {
        StageFixture fixture;
        TestContent &content = fixture.openPopover(*fixture.icon);
        content.grow({300, 100});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(fixture.open()->frame(), QRectF(420 + 303 - 150, 80, 300, 100));
    }

    void thePlaceFollowsTheBar()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.panel.frames.append(QRectF(420, -11, 600, 132));
        fixture.icon->setPos(280, 60);
        fixture.stage.setBody(StageFixture::rectangle({80, 13, 440, 106}));
        QCOMPARE(fixture.open()->frame(), QRectF(623, -11 + 132 - 13 + 6, 200, 150));
    }

    void thePlaceFollowsWhatTheAnchorStandsIn()
    {
        StageFixture fixture;
        auto *row = new QGraphicsWidget;
        fixture.scene.addItem(row);
        fixture.icon->setParentItem(row);
        fixture.openPopover(*fixture.icon);
        const QRectF first = fixture.open()->frame();
        row->setX(30);
        fixture.icon->setX(fixture.icon->x() + 10);
        QCoreApplication::processEvents();
        QCOMPARE(fixture.open()->frame(), first.translated(40, 0));
        fixture.icon->resize(66, 46);
        QCoreApplication::processEvents();
        QCOMPARE(fixture.open()->frame(), first.translated(50, 0));
    }

    void anAnchorThatMovesAsItClosesDoesNoHarm()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        fixture.icon->setX(10);
        fixture.stage.close();
        QCoreApplication::processEvents();
        QVERIFY(fixture.windows.shown.isEmpty());
    }

    void whatClosesInAnEventOfItsOwnLastsUntilThatIsOver()
    {
        StageFixture fixture;
        QPointer<BarPopup> popup;
        bool didLast = false;
        const auto runLoop = [&] {
            // As a drag or a dialog does.
            QEventLoop loop;
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
            loop.exec();
            didLast = popup;
        };
        fixture.stage.openMenu(*fixture.icon, {{.title = QStringLiteral("Open"), .action = runLoop}});
        popup = fixture.open();
        // As the system gives it, which QTest's own click is not.
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, {5, 5}, {5, 5}, Qt::LeftButton, held, Qt::NoModifier);
            QCoreApplication::sendEvent(qobject_cast<MenuView *>(popup)->rows().first(), &event);
        }
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(didLast);
        QCoreApplication::processEvents();
        QVERIFY(!popup);
    }

    void helpIsShownAboveItsAnchor()
    {
        StageFixture fixture;
        fixture.stage.showHelp(*fixture.icon, QStringLiteral("Mail"));
        const HelpTag &tag = fixture.stage.helpTag();
        QVERIFY(tag.isVisible());
        QCOMPARE(tag.text(), QStringLiteral("Mail"));
        QCOMPARE(tag.frame().top(), 80.0);
        QVERIFY(std::abs(tag.frame().center().x() - 723) <= 0.5);
        QVERIFY(!fixture.holds.isHeld());
        fixture.stage.hideHelp();
        QVERIFY(!tag.isVisible());
    }

    void helpGivesWayToWhatOpens()
    {
        StageFixture fixture;
        fixture.stage.showHelp(*fixture.icon, QStringLiteral("Mail"));
        fixture.stage.openMenu(*fixture.icon, fixture.menu());
        QVERIFY(!fixture.stage.helpTag().isVisible());
        fixture.stage.showHelp(*fixture.other, QStringLiteral("Mail"));
        QVERIFY(!fixture.stage.helpTag().isVisible());
    }

    void aDragHoldsTheBarAndWatchesEscape()
    {
        StageFixture fixture;
        {
            const auto drag = fixture.stage.beginDrag();
            QVERIFY(fixture.holds.isHeld());
            QCOMPARE(fixture.windows.escapeWatches.size(), 1U);
            const QSignalSpy cancels(drag.get(), &BarDrag::cancelled);
            fixture.windows.pressEscape();
            fixture.windows.pressEscape();
            QCOMPARE(cancels.size(), 1);
            QCOMPARE(fixture.windows.cancelledDrags, 1);
            QVERIFY(drag->wasCancelled());
        }
        QVERIFY(!fixture.holds.isHeld());
        QVERIFY(fixture.windows.escapeWatches.empty());
    }

    void aDragGoesOnWithoutTheKeyboard()
    {
        StageFixture fixture;
        fixture.windows.isKeyboardHeldElsewhere = true;
        const auto drag = fixture.stage.beginDrag();
        QVERIFY(fixture.holds.isHeld());
        QVERIFY(!drag->wasCancelled());
    }

    void escapeInADragLeavesWhatIsOpen()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        const auto drag = fixture.stage.beginDrag();
        fixture.windows.pressEscape();
        QVERIFY(drag->wasCancelled());
        QVERIFY(fixture.stage.isOpen());
    }

    void whatClosesInADragOfItsOwnLastsUntilThatIsOver()
    {
        StageFixture fixture;
        const QPointer<TestContent> content = &fixture.openPopover(*fixture.icon);
        auto drag = fixture.stage.beginDrag();
        fixture.stage.close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(content);
        drag.reset();
        QVERIFY(content);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!content);
    }

    /// Where the system takes its time to end a drag.
    void whatClosedInADragLastsUntilTheNextOneIsOver()
    {
        StageFixture fixture;
        const QPointer<TestContent> content = &fixture.openPopover(*fixture.icon);
        auto first = fixture.stage.beginDrag();
        auto second = fixture.stage.beginDrag();
        fixture.stage.close();
        first.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(content);
        second.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!content);
    }

    void nothingIsOpenAnyMoreForWhoHearsThatItCloses()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        const OnHide onHide(*fixture.open(), [&fixture] {
            QVERIFY(!fixture.stage.isOpen());
            QVERIFY(!fixture.stage.isOpenAt(*fixture.icon));
            QVERIFY(!fixture.stage.takesPress({300, 50}, Qt::LeftButton));
        });
        fixture.stage.close();
        QCOMPARE(onHide.times(), 1);
    }

    void whatOpensWhileAnotherClosesStaysOpen()
    {
        StageFixture fixture;
        fixture.openPopover(*fixture.icon);
        const OnHide onHide(*fixture.open(), [&fixture] { fixture.openPopover(*fixture.other); });
        fixture.stage.close();
        QCOMPARE(onHide.times(), 1);
        QVERIFY(fixture.stage.isOpenAt(*fixture.other));
        QVERIFY(fixture.holds.isHeld());
        QCOMPARE(fixture.windows.shown.size(), 1);
        fixture.windows.pressEscape();
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!fixture.holds.isHeld());
    }

    void anAnchorThatIsGoneIsNowhere()
    {
        StageFixture fixture;
        const BarAnchor anchor(*fixture.icon, QRectF(3, 40, 10, 10));
        QCOMPARE(anchor.frame(), QRectF(283, 66, 10, 10));
        delete fixture.icon;
        QVERIFY(!anchor.item);
        QCOMPARE(anchor.frame(), QRectF());
    }

    void openingAndClosingIsTold()
    {
        StageFixture fixture;
        const QSignalSpy changes(&fixture.stage, &BarStage::openChanged);
        fixture.openPopover(*fixture.icon);
        QCOMPARE(changes.size(), 1);
        fixture.stage.close();
        QCOMPARE(changes.size(), 2);
        fixture.stage.close();
        QCOMPARE(changes.size(), 2);
    }

    void whatIsOpenGoesWithTheStage()
    {
        {
            StageFixture fixture;
            fixture.openPopover(*fixture.icon);
        }
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }
};

MOORLINE_TEST(BarStageTest);

#include "BarStageTest.moc"

#include "chrome/BarItem.h"

#include "StageFixture.h"
#include "TrialItem.h"
#include "harness/TestCase.h"

#include <QApplication>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// One item that can be dragged, 100 points wide and 40 high, 10 points from both edges.
struct Stage : Hand {
    Stage()
    {
        scene.addItem(item);
        item->setStage(&bar.stage);
        item->setDraggable(TrialItem::DragKind::out);
        item->onDragEnded = [this](TrialItem::DragEnd end) { ends.append(end); };
        item->onDragTo = [this](const QPointF &place) { places.append(place); };
        item->onDrag = [this](const QPointF &place) { drags.append(place); };
        QApplication::setStartDragDistance(10);
    }

    void drag()
    {
        press({20, 20});
        move({60, 20});
    }

    TrialItem *item = new TrialItem(QRectF(10, 10, 100, 40));
    QSignalSpy clicks{item, &BarItem::clicked};
    /// Where they began.
    QList<QPointF> drags;
    /// Where the pointer led it.
    QList<QPointF> places;
    QList<TrialItem::DragEnd> ends;
    StageFixture bar;
};

using Way = std::function<void(TrialItem &)>;

/// By which an item is gone for who drags it.
const QList<Way> waysToGo{[](TrialItem &item) { item.hide(); }, [](TrialItem &item) { item.retire(); },
    [](TrialItem &item) { item.setTouchable(false); }};

void deleteWhatWaits()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class BarItemDragTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aDragBeginsAtTheSystemsDistanceAndIsNoClick()
    {
        Stage stage;
        stage.press({20, 20});
        stage.move({29, 20});
        QVERIFY(stage.drags.isEmpty());
        stage.move({30, 20});
        QCOMPARE(stage.drags, QList<QPointF>{QPointF(10, 10)});
        stage.move({50, 20});
        stage.release({50, 20});
        QCOMPARE(stage.drags.size(), 1);
        QCOMPARE(stage.clicks.size(), 0);
        stage.click({20, 20});
        QCOMPARE(stage.clicks.size(), 1);
    }

    void theDistanceIsThatOfTheScreen()
    {
        Stage stage;
        stage.press({20, 20});
        // The row moves the item along below the pointer.
        stage.item->setX(40);
        stage.move({21, 20});
        QVERIFY(stage.drags.isEmpty());
    }

    void withoutAButtonNothingIsDragged()
    {
        Stage stage;
        stage.move({20, 20});
        stage.move({60, 20});
        QVERIFY(stage.drags.isEmpty());
    }

    void otherButtonsDragNothing()
    {
        Stage stage;
        stage.press({20, 20}, Qt::RightButton);
        stage.move({60, 20});
        QVERIFY(stage.drags.isEmpty());
    }

    void theSecondPressOfADoubleClickDragsToo()
    {
        Stage stage;
        stage.doubleClick({20, 20});
        stage.drag();
        QCOMPARE(stage.drags.size(), 1);
    }

    void whatCannotBeDraggedIsClicked()
    {
        Stage stage;
        stage.item->setDraggable(std::nullopt);
        stage.drag();
        stage.release({60, 20});
        QVERIFY(stage.drags.isEmpty());
        QCOMPARE(stage.clicks.size(), 1);
    }

    void theBarIsHeldDuringTheDrag()
    {
        Stage stage;
        auto *icon = new TrialItem(QRectF(0, 0, 50, 40), stage.item);
        icon->setDraggable(TrialItem::DragKind::out);
        bool wasHeld = false;
        icon->onDrag = [&](const QPointF &) { wasHeld = stage.bar.holds.isHeld() && icon->isDragged(); };
        stage.drag();
        QVERIFY(wasHeld);
        QVERIFY(!stage.bar.holds.isHeld());
        QVERIFY(!icon->isDragged());
    }

    void afterADragThePointerIsFree()
    {
        Stage stage;
        stage.move({20, 20});
        stage.drag();
        QVERIFY(!stage.scene.mouseGrabberItem());
        QVERIFY(!stage.item->isHovered());
    }

    void aDraggedItemThatRetiresLastsUntilTheDragIsOver()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        item->onDrag = [&](const QPointF &) {
            // In the event loop of the drag.
            QMetaObject::invokeMethod(
                item, [&item] { item->retire(); }, Qt::QueuedConnection);
            QCoreApplication::processEvents();
            deleteWhatWaits();
            QVERIFY(item);
            QVERIFY(!item->isVisible());
            QVERIFY(stage.bar.holds.isHeld());
        };
        stage.drag();
        QVERIFY(!stage.bar.holds.isHeld());
        deleteWhatWaits();
        QVERIFY(!item);
    }

    void whatTakesTheItemAwayCancelsItsDragOutOfTheBar()
    {
        for (const bool hasStage : {true, false}) {
            for (const Way &way : waysToGo) {
                Stage stage;
                stage.item->setStage(hasStage ? &stage.bar.stage : nullptr);
                stage.item->onDrag = [&](const QPointF &) {
                    way(*stage.item);
                    QCOMPARE(stage.bar.windows.cancelledDrags, hasStage ? 1 : 0);
                    // Until the system's drag has come to its end, which is with the button let go where that is none
                    // of the program's to say.
                    QVERIFY(stage.ends.isEmpty());
                };
                stage.drag();
                QCOMPARE(stage.ends, QList{TrialItem::DragEnd::cancelled});
                QVERIFY(!stage.item->isDragged());
                QVERIFY(!stage.bar.holds.isHeld());
            }
        }
    }

    void whatHearsOfTheDragMayTakeTheItemAway()
    {
        for (const TrialItem::DragKind kind : {TrialItem::DragKind::out, TrialItem::DragKind::inside}) {
            for (const Way &way : waysToGo) {
                Stage stage;
                stage.item->setDraggable(kind);
                connect(stage.item, &BarItem::draggedChanged, stage.item, [&] {
                    if (stage.item->isDragged())
                        way(*stage.item);
                });
                stage.drag();
                QVERIFY(stage.drags.isEmpty());
                QCOMPARE(stage.ends, QList{TrialItem::DragEnd::cancelled});
                QVERIFY(!stage.item->isDragged());
                QVERIFY(!stage.bar.holds.isHeld());
                QVERIFY(stage.bar.windows.escapeWatches.empty());
                stage.move({70, 20});
                stage.release({70, 20});
                QVERIFY(stage.places.isEmpty());
                QCOMPARE(stage.ends.size(), 1);
            }
        }
    }

    void whatIsTakenAwayBeforeItsDragIsNotDragged()
    {
        for (const Way &way : waysToGo) {
            // By who hears that the press is over, and by who hears that the bar is held.
            for (const bool isPress : {true, false}) {
                Stage stage;
                const auto takeAway = [&] { way(*stage.item); };
                stage.press({20, 20});
                if (isPress)
                    connect(stage.item, &BarItem::pressedChanged, stage.item, takeAway);
                else
                    connect(&stage.bar.holds, &BarHolds::heldChanged, stage.item, takeAway, Qt::SingleShotConnection);
                stage.move({60, 20});
                QVERIFY(stage.drags.isEmpty());
                QVERIFY(stage.ends.isEmpty());
                QVERIFY(!stage.item->isDragged());
                QVERIFY(!stage.bar.holds.isHeld());
            }
        }
    }

    void aPressDuringADragBeginsNoOther()
    {
        Stage stage;
        int drags = 0;
        stage.item->onDrag = [&](const QPointF &) {
            if (drags++ == 0)
                stage.drag();
        };
        stage.drag();
        QCOMPARE(drags, 1);
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::letGo});
    }

    void aDragGoesOnWhileTheItemIsMoved()
    {
        Stage stage;
        stage.item->onDrag = [&](const QPointF &) {
            stage.item->setGeometry(150, 10, 60, 40);
            stage.item->setOpacity(0.35);
        };
        stage.drag();
        QCOMPARE(stage.bar.windows.cancelledDrags, 0);
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::letGo});
    }

    void anItemMayBeDestroyedDuringItsDrag()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        item->onDrag = [item](const QPointF &) { delete item; };
        stage.drag();
        QVERIFY(!item);
        QCOMPARE(stage.bar.windows.cancelledDrags, 1);
        QVERIFY(!stage.bar.holds.isHeld());
        stage.release({60, 20});
    }

    void theEndOfADragIsTold()
    {
        Stage stage;
        stage.item->onDrag = [&](const QPointF &) { QVERIFY(stage.ends.isEmpty()); };
        stage.drag();
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::letGo});
        QVERIFY(!stage.item->isDragged());
    }

    void escapeCancelsADrag()
    {
        Stage stage;
        stage.item->onDrag = [&](const QPointF &) { stage.bar.windows.pressEscape(); };
        stage.drag();
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::cancelled});
        stage.release({20, 20});
        QCOMPARE(stage.clicks.size(), 0);
        // Whose it is next.
        QVERIFY(stage.bar.windows.escapeWatches.empty());
        stage.item->onDrag = nullptr;
        stage.drag();
        QCOMPARE(stage.ends.last(), TrialItem::DragEnd::letGo);
    }

    void aDragThatEndsWithTheButtonHeldWasCancelled()
    {
        Stage stage;
        stage.item->onDrag = [&](const QPointF &) { stage.bar.pointer.buttons = Qt::LeftButton; };
        stage.drag();
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::cancelled});
    }

    void escapeThatAnotherProgramHasCancelsNothing()
    {
        Stage stage;
        stage.bar.windows.isKeyboardHeldElsewhere = true;
        stage.item->onDrag = [&](const QPointF &) { stage.bar.windows.pressEscape(); };
        stage.drag();
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::letGo});
    }

    void anItemThatStaysInTheBarFollowsThePointer()
    {
        Stage stage;
        stage.item->setDraggable(TrialItem::DragKind::inside);
        stage.press({20, 20});
        stage.move({30, 20});
        QVERIFY(stage.item->isDragged());
        QVERIFY(stage.bar.holds.isHeld());
        stage.item->setX(50);
        stage.move({70, 25});
        stage.move({250, 90});
        QCOMPARE(stage.places, (QList<QPointF>{{70, 25}, {250, 90}}));
        QVERIFY(stage.ends.isEmpty());
        stage.release({250, 90});
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::letGo});
        QVERIFY(!stage.item->isDragged());
        QVERIFY(!stage.bar.holds.isHeld());
        QVERIFY(stage.drags.isEmpty());
        QCOMPARE(stage.clicks.size(), 0);
    }

    void escapeCancelsADragInTheBar()
    {
        Stage stage;
        stage.item->setDraggable(TrialItem::DragKind::inside);
        stage.drag();
        stage.bar.windows.pressEscape();
        QCOMPARE(stage.ends, QList{TrialItem::DragEnd::cancelled});
        QVERIFY(!stage.item->isDragged());
        QVERIFY(!stage.bar.holds.isHeld());
        QVERIFY(stage.bar.windows.escapeWatches.empty());
        stage.move({70, 20});
        stage.release({20, 20});
        QCOMPARE(stage.places.size(), 0);
        QCOMPARE(stage.ends.size(), 1);
        QCOMPARE(stage.clicks.size(), 0);
        stage.click({20, 20});
        QCOMPARE(stage.clicks.size(), 1);
    }

    void whatTakesTheItemAwayCancelsItsDragInTheBar()
    {
        const QList<Way> lost{[](TrialItem &item) { item.ungrabMouse(); }};
        for (const Way &way : waysToGo + lost) {
            Stage stage;
            stage.item->setDraggable(TrialItem::DragKind::inside);
            stage.drag();
            way(*stage.item);
            QCOMPARE(stage.ends, QList{TrialItem::DragEnd::cancelled});
            QVERIFY(!stage.bar.holds.isHeld());
            stage.release({60, 20});
            QCOMPARE(stage.ends.size(), 1);
        }
    }

    void anItemMayBeDestroyedDuringItsDragInTheBar()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        item->setDraggable(TrialItem::DragKind::inside);
        stage.drag();
        delete item;
        QVERIFY(!stage.bar.holds.isHeld());
        stage.bar.windows.pressEscape();
        stage.release({60, 20});
    }

    void anItemMayBeDestroyedByTheEndOfItsDrag()
    {
        for (const TrialItem::DragKind kind : {TrialItem::DragKind::out, TrialItem::DragKind::inside}) {
            Stage stage;
            const QPointer<TrialItem> item = stage.item;
            item->setDraggable(kind);
            item->onDragEnded = [item](TrialItem::DragEnd) { delete item; };
            stage.drag();
            stage.bar.windows.pressEscape();
            QVERIFY(!item);
            QVERIFY(!stage.bar.holds.isHeld());
        }
    }
};

MOORLINE_TEST(BarItemDragTest);

#include "BarItemDragTest.moc"

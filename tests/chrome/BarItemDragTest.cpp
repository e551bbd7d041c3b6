#include "chrome/BarItem.h"

#include "StageFixture.h"
#include "TrialItem.h"
#include "harness/TestCase.h"

#include <QApplication>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString files = QStringLiteral("text/uri-list");

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

void deleteWhatWaits()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Something that counts how often it is read.
class Offer final : public QMimeData {
public:
    explicit Offer(QString format)
        : m_format(std::move(format))
    {
    }

    [[nodiscard]] QStringList formats() const override { return {m_format}; }
    [[nodiscard]] int timesRead() const { return m_timesRead; }

protected:
    [[nodiscard]] QVariant retrieveData(const QString &, QMetaType) const override
    {
        ++m_timesRead;
        return {};
    }

private:
    QString m_format;
    mutable int m_timesRead = 0;
};

struct Drop {
    explicit Drop(const QMimeData &data, Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction)
    {
        for (QGraphicsSceneDragDropEvent *event : {&enter, &leave, &drop}) {
            event->setMimeData(&data);
            event->setPossibleActions(possible);
            event->setDropAction(Qt::MoveAction);
        }
    }

    QGraphicsSceneDragDropEvent enter{QEvent::GraphicsSceneDragEnter};
    QGraphicsSceneDragDropEvent leave{QEvent::GraphicsSceneDragLeave};
    QGraphicsSceneDragDropEvent drop{QEvent::GraphicsSceneDrop};
};

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

    void anItemMayBeDestroyedDuringItsDrag()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        item->onDrag = [item](const QPointF &) { delete item; };
        stage.drag();
        QVERIFY(!item);
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
        const QList<std::function<void(TrialItem &)>> ways{[](TrialItem &item) { item.hide(); },
            [](TrialItem &item) { item.retire(); }, [](TrialItem &item) { item.setTouchable(false); },
            [](TrialItem &item) { item.ungrabMouse(); }};
        for (const auto &way : ways) {
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

    void whatIsOfferedIsReadOnceOnTheDrop()
    {
        Stage stage;
        const Offer offer(files);
        stage.item->taken = {files};
        stage.item->onDrop = [&offer] { QVERIFY(offer.data(files).isEmpty()); };
        Drop drop(offer);
        QSignalSpy hovered(stage.item, &BarItem::dropHoveredChanged);
        for (int i = 0; i < 2; ++i) {
            stage.scene.sendEvent(stage.item, &drop.enter);
            QVERIFY(drop.enter.isAccepted());
            QVERIFY(stage.item->isDropHovered());
            stage.scene.sendEvent(stage.item, &drop.leave);
            QVERIFY(!stage.item->isDropHovered());
        }
        stage.scene.sendEvent(stage.item, &drop.enter);
        QCOMPARE(offer.timesRead(), 0);
        stage.scene.sendEvent(stage.item, &drop.drop);
        QCOMPARE(offer.timesRead(), 1);
        QVERIFY(drop.drop.isAccepted());
        QVERIFY(!stage.item->isDropHovered());
        QCOMPARE(hovered.size(), 6);
    }

    void otherFormatsAreRefused()
    {
        Stage stage;
        const Offer offer(QStringLiteral("text/plain"));
        stage.item->taken = {files};
        Drop drop(offer);
        stage.scene.sendEvent(stage.item, &drop.enter);
        QVERIFY(!drop.enter.isAccepted());
        QVERIFY(!stage.item->isDropHovered());
        stage.scene.sendEvent(stage.item, &drop.drop);
        QVERIFY(!drop.drop.isAccepted());
        QCOMPARE(offer.timesRead(), 0);
    }

    void aDropIsNeverAMove()
    {
        Stage stage;
        const Offer offer(files);
        Drop copy(offer);
        stage.scene.sendEvent(stage.item, &copy.drop);
        QCOMPARE(copy.drop.dropAction(), Qt::CopyAction);
        Drop link(offer, Qt::CopyAction | Qt::LinkAction | Qt::MoveAction);
        stage.scene.sendEvent(stage.item, &link.drop);
        QCOMPARE(link.drop.dropAction(), Qt::LinkAction);
    }

    void anItemMayBeDestroyedByWhatIsDropped()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        const Offer offer(files);
        item->taken = {files};
        item->onDrop = [item] { delete item; };
        Drop drop(offer);
        stage.scene.sendEvent(item, &drop.drop);
        QVERIFY(!item);
    }
};

MOORLINE_TEST(BarItemDragTest);

#include "BarItemDragTest.moc"

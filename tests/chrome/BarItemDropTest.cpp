#include "chrome/BarItem.h"

#include "StageFixture.h"
#include "TrialItem.h"
#include "chrome/BarDrag.h"
#include "harness/TestCase.h"

#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString files = QStringLiteral("text/uri-list");
const Qt::DropActions everyAction = Qt::CopyAction | Qt::LinkAction | Qt::MoveAction;

/// One item, 100 points wide and 40 high, 10 points from both edges.
struct Stage : Hand {
    Stage() { scene.addItem(item); }

    TrialItem *item = new TrialItem(QRectF(10, 10, 100, 40));
};

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

class BarItemDropTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
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

    void whatIsRefusedDoesNotGoToTheItemBelow()
    {
        Stage stage;
        const Offer offer(files);
        auto *inside = new TrialItem(QRectF(0, 0, 40, 40), stage.item);
        int drops = 0;
        for (TrialItem *item : {stage.item, inside})
            item->taken = {files};
        inside->onDrop = [&drops] { ++drops; };
        inside->isRefusing = true;
        QSignalSpy lit(inside, &BarItem::dropHoveredChanged);
        QCOMPARE(stage.dragOver({80, 20}, offer, everyAction), Qt::CopyAction);
        QVERIFY(stage.item->isDropHovered());
        QCOMPARE(stage.dragOver({20, 20}, offer, everyAction), Qt::IgnoreAction);
        QCOMPARE(stage.dragOver({21, 20}, offer, everyAction), Qt::IgnoreAction);
        QVERIFY(!stage.item->isDropHovered());
        QCOMPARE(lit.size(), 0);
        QCOMPARE(stage.dragOver({80, 20}, offer, everyAction), Qt::CopyAction);
        QVERIFY(stage.item->isDropHovered());
        QCOMPARE(drops, 0);
    }

    void whatIsLetGoWhereItIsRefusedIsHeardOf()
    {
        StageFixture fixture;
        Stage stage;
        stage.item->setStage(&fixture.stage);
        stage.item->taken = {files};
        const Offer offer(files);
        const auto refusals = [&](Qt::MouseButtons buttons) {
            fixture.pointer.buttons = Qt::LeftButton;
            stage.dragOver({20, 20}, offer, everyAction);
            fixture.pointer.buttons = buttons;
            stage.dragAway();
            return std::exchange(stage.item->refusals, 0);
        };
        QCOMPARE(refusals(Qt::NoButton), 0);
        stage.item->isRefusing = true;
        QCOMPARE(refusals(Qt::LeftButton), 0);
        QCOMPARE(refusals(Qt::NoButton), 1);
        stage.item->isRefusing = false;
        QCOMPARE(refusals(Qt::NoButton), 0);
    }

    void whoDropsWhatWasRefusedIsHeard()
    {
        Stage stage;
        const Offer offer(files);
        int drops = 0;
        stage.item->taken = {files};
        stage.item->isRefusing = true;
        stage.item->onDrop = [&drops] { ++drops; };
        Drop drop(offer);
        stage.scene.sendEvent(stage.item, &drop.drop);
        QCOMPARE(drops, 1);
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

    void whatIsTakenIsCopiedOrElseMoved_data()
    {
        QTest::addColumn<Qt::DropActions>("possible");
        QTest::addColumn<Qt::DropAction>("answer");
        QTest::newRow("everything") << everyAction << Qt::CopyAction;
        QTest::newRow("copy") << Qt::DropActions(Qt::CopyAction) << Qt::CopyAction;
        QTest::newRow("copy or move") << (Qt::CopyAction | Qt::MoveAction) << Qt::CopyAction;
        QTest::newRow("copy or link") << (Qt::CopyAction | Qt::LinkAction) << Qt::CopyAction;
        QTest::newRow("move") << Qt::DropActions(Qt::MoveAction) << Qt::MoveAction;
        QTest::newRow("move or link") << (Qt::MoveAction | Qt::LinkAction) << Qt::MoveAction;
        QTest::newRow("link") << Qt::DropActions(Qt::LinkAction) << Qt::LinkAction;
        QTest::newRow("nothing") << Qt::DropActions() << Qt::IgnoreAction;
    }

    void whatIsTakenIsCopiedOrElseMoved()
    {
        QFETCH(Qt::DropActions, possible);
        QFETCH(Qt::DropAction, answer);
        Stage stage;
        const Offer offer(files);
        stage.item->taken = {files};
        stage.item->onDrop = [] {};
        QCOMPARE(stage.dragOver({20, 20}, offer, possible), answer);
        QCOMPARE(stage.item->isDropHovered(), answer != Qt::IgnoreAction);
        QCOMPARE(stage.letGo({20, 20}, offer, possible), answer);
    }

    void whatWouldOnlyBeMovedFromUnderItDoesNotGoToTheItemBelow()
    {
        Stage stage;
        const Offer offer(files);
        auto *inside = new TrialItem(QRectF(0, 0, 40, 40), stage.item);
        int drops = 0;
        for (TrialItem *item : {stage.item, inside}) {
            item->taken = {files};
            item->onDrop = [&drops] { ++drops; };
        }
        inside->isKeeping = true;
        QCOMPARE(stage.dragOver({20, 20}, offer, Qt::MoveAction), Qt::IgnoreAction);
        QVERIFY(!stage.item->isDropHovered());
        QVERIFY(!inside->isDropHovered());
        Drop direct(offer, Qt::MoveAction);
        stage.scene.sendEvent(inside, &direct.drop);
        QVERIFY(!direct.drop.isAccepted());
        QCOMPARE(drops, 0);
        // Nobody was to take it: of that, there is nothing to say.
        stage.dragAway();
        QCOMPARE(inside->refusals, 0);
        QCOMPARE(stage.dragOver({80, 20}, offer, Qt::MoveAction), Qt::MoveAction);
        QVERIFY(stage.item->isDropHovered());
    }

    void theAnswerFollowsWhatTheSourceWouldDo()
    {
        Stage stage;
        const Offer offer(files);
        stage.item->taken = {files};
        stage.item->isKeeping = true;
        QCOMPARE(stage.dragOver({20, 20}, offer, everyAction), Qt::CopyAction);
        // As while a key is held.
        QCOMPARE(stage.dragOver({21, 20}, offer, Qt::MoveAction), Qt::IgnoreAction);
        QVERIFY(!stage.item->isDropHovered());
        QCOMPARE(stage.dragOver({22, 20}, offer, Qt::CopyAction), Qt::CopyAction);
        QVERIFY(stage.item->isDropHovered());
        QCOMPARE(offer.timesRead(), 0);
        stage.dragAway();
        QVERIFY(!stage.item->isDropHovered());
    }

    void whatTheBarCancelledIsTakenByNobody()
    {
        Stage stage;
        StageFixture bar;
        stage.item->setStage(&bar.stage);
        const Offer offer(files);
        stage.item->taken = {files};
        stage.item->onDrop = [] {};
        auto drag = bar.stage.beginDrag();
        QCOMPARE(stage.dragOver({20, 20}, offer, Qt::CopyAction), Qt::CopyAction);
        bar.windows.pressEscape();
        // Before anything else is heard of it.
        QCOMPARE(stage.letGo({20, 20}, offer, Qt::CopyAction), Qt::IgnoreAction);
        QCOMPARE(stage.dragOver({21, 20}, offer, Qt::CopyAction), Qt::IgnoreAction);
        QVERIFY(!stage.item->isDropHovered());
        drag.reset();
        QCOMPARE(stage.dragOver({20, 20}, offer, Qt::CopyAction), Qt::CopyAction);
    }
};

MOORLINE_TEST(BarItemDropTest);

#include "BarItemDropTest.moc"

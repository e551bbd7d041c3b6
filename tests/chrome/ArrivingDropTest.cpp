#include "platform/ArrivingDrop.h"
#include "TrialItem.h"
#include "fakes/FakeDropTransfer.h"
#include "harness/TestCase.h"

#include <QGraphicsSceneDragDropEvent>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString files = QStringLiteral("text/uri-list");
const QByteArray list = QByteArrayLiteral("file:///caf\xe9\r\n");
constexpr QPoint onTheItem(20, 20);

/// One item that takes files, and a program that lets some go over it.
struct Stage : Hand {
    Stage()
    {
        scene.addItem(item);
        item->taken = {files};
    }

    /// What the program is told at once; what it lets go then waits for its data.
    Qt::DropAction letGoOverTheItem(Qt::DropActions possible = Qt::CopyAction, const QStringList &formats = {files})
    {
        auto owned = std::make_shared<FakeDropTransfer>(letGoThere);
        const ArrivingDrop arriving(formats, owned);
        transfer = owned;
        owned.reset();
        dragOver(onTheItem, arriving, possible);
        return Hand::letGo(onTheItem, arriving, possible);
    }
    void arrive(const std::optional<QByteArray> &data) const
    {
        const auto held = transfer.lock();
        QVERIFY(held);
        held->arrive(data);
    }

    LetGo letGoThere;
    std::weak_ptr<FakeDropTransfer> transfer;
    QPointer<TrialItem> item = new TrialItem(QRectF(10, 10, 100, 40));
};

} // namespace

/// What is let go over an item, and comes later.
class ArrivingDropTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theItemHearsOfItOnceItIsThere()
    {
        Stage stage;
        QList<QByteArray> dropped;
        stage.item->onData = [&](const QMimeData &data) { dropped.append(data.data(files)); };
        QCOMPARE(stage.letGoOverTheItem(), Qt::CopyAction);
        QVERIFY(!stage.item->isDropHovered());
        QCOMPARE(stage.letGoThere.read, QStringList{files});
        QVERIFY(dropped.isEmpty());
        QVERIFY(stage.letGoThere.answers.isEmpty());
        stage.arrive(list);
        // Byte for byte.
        QCOMPARE(dropped, QList{list});
        QCOMPARE(stage.letGoThere.answers, QList{Qt::CopyAction});
    }

    void theProgramIsToldWhatItWasPromised_data()
    {
        QTest::addColumn<Qt::DropActions>("possible");
        QTest::addColumn<Qt::DropAction>("answer");
        QTest::newRow("copied") << (Qt::CopyAction | Qt::MoveAction | Qt::LinkAction) << Qt::CopyAction;
        QTest::newRow("moved") << (Qt::MoveAction | Qt::LinkAction) << Qt::MoveAction;
        QTest::newRow("linked") << Qt::DropActions(Qt::LinkAction) << Qt::LinkAction;
    }

    void theProgramIsToldWhatItWasPromised()
    {
        QFETCH(Qt::DropActions, possible);
        QFETCH(Qt::DropAction, answer);
        Stage stage;
        stage.item->onDrop = [] {};
        QCOMPARE(stage.letGoOverTheItem(possible), answer);
        stage.arrive(list);
        QCOMPARE(stage.letGoThere.answers, QList{answer});
    }

    void whatWasNoneOfTheItemsIsNotTaken()
    {
        Stage stage;
        QVERIFY(stage.letGoOverTheItem() != Qt::IgnoreAction);
        stage.arrive(list);
        QCOMPARE(stage.letGoThere.answers, QList{Qt::IgnoreAction});
    }

    void whatDoesNotComeIsNotTaken()
    {
        Stage stage;
        int drops = 0;
        stage.item->onDrop = [&drops] { ++drops; };
        QVERIFY(stage.letGoOverTheItem() != Qt::IgnoreAction);
        stage.arrive(std::nullopt);
        QCOMPARE(drops, 0);
        QCOMPARE(stage.letGoThere.answers, QList{Qt::IgnoreAction});
    }

    void nothingIsAskedForWhereNothingIsTaken()
    {
        Stage stage;
        QCOMPARE(stage.letGoOverTheItem(Qt::CopyAction, {QStringLiteral("text/plain")}), Qt::IgnoreAction);
        // A program that lets go all the same.
        const ArrivingDrop text({QStringLiteral("text/plain")}, std::make_shared<FakeDropTransfer>(stage.letGoThere));
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(&text);
        drop.setPossibleActions(Qt::CopyAction);
        stage.scene.sendEvent(stage.item, &drop);
        QVERIFY(!drop.isAccepted());
        QVERIFY(stage.letGoThere.read.isEmpty());
    }

    void anotherItemTakesAnotherDropMeanwhile()
    {
        Stage stage;
        QList<QByteArray> dropped;
        stage.item->onData = [&](const QMimeData &data) { dropped.append(data.data(files)); };
        stage.letGoOverTheItem(Qt::MoveAction);
        const auto first = stage.transfer;
        stage.letGoOverTheItem(Qt::CopyAction);
        stage.arrive("second");
        first.lock()->arrive("first");
        QCOMPARE(dropped, (QList<QByteArray>{"second", "first"}));
        QCOMPARE(stage.letGoThere.answers, (QList{Qt::CopyAction, Qt::MoveAction}));
    }

    void anItemThatRetiresTakesNothing()
    {
        Stage stage;
        int drops = 0;
        stage.item->onDrop = [&drops] { ++drops; };
        stage.letGoOverTheItem();
        stage.item->retire();
        QCOMPARE(stage.letGoThere.answers, QList{Qt::IgnoreAction});
        QVERIFY(!stage.transfer.lock());
    }

    void anItemThatGoesTakesNothing()
    {
        Stage stage;
        stage.letGoOverTheItem();
        delete stage.item;
        QCOMPARE(stage.letGoThere.answers, QList{Qt::IgnoreAction});
    }

    void anItemMayRetireByWhatItTook()
    {
        Stage stage;
        stage.item->onDrop = [&stage] {
            stage.item->retire();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(stage.item);
        };
        stage.letGoOverTheItem();
        stage.arrive(list);
        QCOMPARE(stage.letGoThere.answers, QList{Qt::CopyAction});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!stage.item);
    }

    void anItemMayBeDestroyedByWhatItTook()
    {
        Stage stage;
        stage.item->onDrop = [item = stage.item] { delete item; };
        stage.letGoOverTheItem();
        stage.arrive(list);
        QCOMPARE(stage.letGoThere.answers, QList{Qt::CopyAction});
        QVERIFY(!stage.item);
    }
};

MOORLINE_TEST(ArrivingDropTest);

#include "ArrivingDropTest.moc"

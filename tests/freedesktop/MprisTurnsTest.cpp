#include "freedesktop/MprisTurns.h"
#include "harness/TestCase.h"

using namespace moorline;
using Status = MprisProperties::Status;

namespace {

const QString one = QStringLiteral(":1.1");
const QString two = QStringLiteral(":1.2");

} // namespace

class MprisTurnsTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whoNeverPlayedHasNoTurn()
    {
        MprisTurns turns;
        QCOMPARE(turns.turnOf(one), quint64(0));
        turns.note(one, std::nullopt);
        turns.note(one, Status::paused);
        turns.note(one, Status::stopped);
        QCOMPARE(turns.turnOf(one), quint64(0));
    }

    void toBeginIsATurnAndToEndIsOne_data()
    {
        QTest::addColumn<Status>("end");
        QTest::newRow("a pause") << Status::paused;
        QTest::newRow("a stop") << Status::stopped;
    }
    void toBeginIsATurnAndToEndIsOne()
    {
        QFETCH(const Status, end);
        MprisTurns turns;
        turns.note(one, Status::playing);
        QCOMPARE(turns.turnOf(one), quint64(1));
        turns.note(one, end);
        QCOMPARE(turns.turnOf(one), quint64(2));
        turns.note(one, Status::playing);
        QCOMPARE(turns.turnOf(one), quint64(3));
    }

    void toGoOnIsNone()
    {
        MprisTurns turns;
        turns.note(one, Status::playing);
        turns.note(one, Status::playing);
        QCOMPARE(turns.turnOf(one), quint64(1));
        turns.note(one, Status::paused);
        turns.note(one, Status::stopped);
        QCOMPARE(turns.turnOf(one), quint64(2));
    }

    void turnsAreCountedOverAllPlayers()
    {
        MprisTurns turns;
        turns.note(one, Status::playing);
        turns.note(two, Status::playing);
        QCOMPARE(turns.turnOf(one), quint64(1));
        QCOMPARE(turns.turnOf(two), quint64(2));
        turns.note(one, Status::paused);
        QCOMPARE(turns.turnOf(one), quint64(3));
        QCOMPARE(turns.turnOf(two), quint64(2));
    }

    void whoFallsSilentHasNotEnded()
    {
        MprisTurns turns;
        turns.note(one, Status::playing);
        turns.note(two, Status::playing);
        turns.note(one, std::nullopt);
        turns.note(one, Status::playing);
        QCOMPARE(turns.turnOf(one), quint64(1));
    }

    void whoComesAgainIsNew()
    {
        MprisTurns turns;
        turns.note(one, Status::playing);
        turns.note(two, Status::playing);
        turns.forget(one);
        QCOMPARE(turns.turnOf(one), quint64(0));
        QCOMPARE(turns.turnOf(two), quint64(2));
        turns.note(one, Status::paused);
        QCOMPARE(turns.turnOf(one), quint64(0));
        turns.note(one, Status::playing);
        QCOMPARE(turns.turnOf(one), quint64(3));
    }
};

MOORLINE_TEST(MprisTurnsTest);
#include "MprisTurnsTest.moc"

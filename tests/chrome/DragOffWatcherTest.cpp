#include "chrome/DragOffWatcher.h"

#include "fakes/FakeClock.h"
#include "fakes/FakePointer.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// A panel of 600 by 98 points at the bottom of the screen, and an icon that is being dragged.
struct Fixture {
    Fixture()
    {
        pointer.buttons = Qt::LeftButton;
        begin();
    }

    void begin()
    {
        watcher.begin([this](bool isOff) { answers.append(isOff); });
    }

    void letGoAt(const QPointF &place)
    {
        pointer.place = place;
        pointer.buttons = Qt::NoButton;
        clock.advance(80ms);
    }

    FakeClock clock;
    FakePointer pointer;
    std::optional<QRectF> frame = QRectF(420, 100, 600, 98);
    QList<bool> answers;
    DragOffWatcher watcher{clock, pointer, [this] { return frame; }};
};

} // namespace

class DragOffWatcherTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void sixtyPointsAroundThePanelCountAsOnTheBar_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<bool>("isOff");
        QTest::newRow("inside") << QPointF(700, 150) << false;
        QTest::newRow("50 below") << QPointF(700, 50) << false;
        QTest::newRow("70 below") << QPointF(700, 30) << true;
        QTest::newRow("60 above") << QPointF(700, 258) << false;
        QTest::newRow("61 above") << QPointF(700, 259) << true;
        QTest::newRow("60 left") << QPointF(360, 150) << false;
        QTest::newRow("61 left") << QPointF(359, 150) << true;
        QTest::newRow("60 right") << QPointF(1080, 150) << false;
        QTest::newRow("61 right") << QPointF(1081, 150) << true;
    }

    void sixtyPointsAroundThePanelCountAsOnTheBar()
    {
        QFETCH(QPointF, place);
        QFETCH(bool, isOff);
        Fixture fixture;
        fixture.letGoAt(place);
        QCOMPARE(fixture.answers, QList{isOff});
    }

    void itLooksEveryEightyMilliseconds()
    {
        Fixture fixture;
        QCOMPARE(fixture.clock.repeatingIntervals(), QList{80ms});
        fixture.pointer.buttons = Qt::NoButton;
        fixture.clock.advance(79ms);
        QVERIFY(fixture.answers.isEmpty());
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.answers.size(), 1);
    }

    void itWaitsWhileAnyButtonIsPressed_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::newRow("left") << Qt::LeftButton;
        QTest::newRow("middle") << Qt::MiddleButton;
        QTest::newRow("right") << Qt::RightButton;
        QTest::newRow("extra") << Qt::ForwardButton;
    }

    void itWaitsWhileAnyButtonIsPressed()
    {
        QFETCH(Qt::MouseButton, button);
        Fixture fixture;
        fixture.pointer.buttons = button;
        fixture.clock.advance(60s);
        QVERIFY(fixture.answers.isEmpty());
        QVERIFY(fixture.watcher.isWatching());
    }

    void itAnswersOnceForEachDrag()
    {
        Fixture fixture;
        fixture.letGoAt({700, 800});
        fixture.clock.advance(60s);
        QCOMPARE(fixture.answers, QList{true});
        QVERIFY(!fixture.watcher.isWatching());
        QCOMPARE(fixture.clock.runningTimers(), 0);
        fixture.begin();
        fixture.letGoAt({700, 150});
        QCOMPARE(fixture.answers, (QList{true, false}));
    }

    void anotherDragTakesThePlaceOfTheOneBefore()
    {
        Fixture fixture;
        fixture.clock.advance(40ms);
        QList<bool> others;
        fixture.watcher.begin([&](bool isOff) { others.append(isOff); });
        QCOMPARE(fixture.clock.runningTimers(), 1);
        fixture.letGoAt({700, 800});
        QCOMPARE(others, QList{true});
        QVERIFY(fixture.answers.isEmpty());
    }

    void thePanelIsAskedForWhenItIsLetGo()
    {
        Fixture fixture;
        fixture.clock.advance(1s);
        fixture.frame = QRectF(420, 600, 600, 98);
        fixture.letGoAt({700, 150});
        QCOMPARE(fixture.answers, QList{true});
    }

    void withoutAPanelNothingIsOff()
    {
        Fixture fixture;
        fixture.frame.reset();
        fixture.letGoAt({-5000, 5000});
        QCOMPARE(fixture.answers, QList{false});
    }

    void whoeverHearsOfItMayBeginAnew()
    {
        Fixture fixture;
        fixture.watcher.begin([&](bool) { fixture.begin(); });
        fixture.letGoAt({700, 150});
        QVERIFY(fixture.watcher.isWatching());
        fixture.clock.advance(80ms);
        QCOMPARE(fixture.answers, QList{false});
    }

    void whoeverHearsOfItMayEndTheWatcher()
    {
        Fixture fixture;
        auto watcher =
            std::make_unique<DragOffWatcher>(fixture.clock, fixture.pointer, [] { return std::optional<QRectF>(); });
        watcher->begin([&](bool) { watcher.reset(); });
        fixture.letGoAt({700, 150});
        QVERIFY(!watcher);
    }

    void whatIsStoppedTellsNothing()
    {
        Fixture fixture;
        fixture.watcher.stop();
        fixture.letGoAt({700, 800});
        QVERIFY(fixture.answers.isEmpty());
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }
};

MOORLINE_TEST(DragOffWatcherTest);
#include "DragOffWatcherTest.moc"

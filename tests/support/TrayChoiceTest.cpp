#include "support/TrayChoice.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace std::chrono_literals;

class TrayChoiceTest final : public moorline::test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whoShowsItOnTheBusIsEnough_data() { lapses(); }
    void whoShowsItOnTheBusIsEnough()
    {
        QFETCH(int, lapse);
        const auto unshownFor = std::chrono::milliseconds(lapse);
        const TrayChoice choice = chooseTray({.isShownOnBus = true, .hasOlderKind = true, .unshownFor = unshownFor});
        QVERIFY(!choice.isInOlderTray);
        QVERIFY(!choice.again);
    }

    void withoutAnXServerThereIsNoOlderOne_data() { lapses(); }
    void withoutAnXServerThereIsNoOlderOne()
    {
        QFETCH(int, lapse);
        const auto unshownFor = std::chrono::milliseconds(lapse);
        const TrayChoice choice = chooseTray({.isShownOnBus = false, .hasOlderKind = false, .unshownFor = unshownFor});
        QVERIFY(!choice.isInOlderTray);
        QVERIFY(!choice.again);
    }

    void theBusHasASecondBeforeTheOlderOneIsTaken_data()
    {
        QTest::addColumn<int>("lapse");
        QTest::addColumn<bool>("isInOlderTray");
        QTest::addColumn<int>("again");
        QTest::newRow("at first") << 0 << false << 1000;
        QTest::newRow("in between") << 400 << false << 600;
        QTest::newRow("just before") << 999 << false << 1;
        QTest::newRow("then") << 1000 << true << -1;
        QTest::newRow("for good") << 3600000 << true << -1;
    }

    void theBusHasASecondBeforeTheOlderOneIsTaken()
    {
        QFETCH(int, lapse);
        QFETCH(int, again);
        const TrayChoice choice =
            chooseTray({.isShownOnBus = false, .hasOlderKind = true, .unshownFor = std::chrono::milliseconds(lapse)});
        QTEST(choice.isInOlderTray, "isInOlderTray");
        QCOMPARE(choice.again.value_or(-1ms), std::chrono::milliseconds(again));
    }

private:
    static void lapses()
    {
        QTest::addColumn<int>("lapse");
        QTest::newRow("at first") << 0;
        QTest::newRow("after a while") << 5000;
    }
};

MOORLINE_TEST(TrayChoiceTest);

#include "TrayChoiceTest.moc"

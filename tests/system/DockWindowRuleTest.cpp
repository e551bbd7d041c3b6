#include "system/DockWindowRule.h"
#include "fakes/FakeScreens.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const QRectF screen(0, 0, 1440, 900);

WindowDescription dock(const QRectF &bounds)
{
    return {.ownerName = QStringLiteral("Panel"), .ownerProcess = 7, .bounds = bounds, .kind = WindowKind::dock};
}

} // namespace

class DockWindowRuleTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aDockShowsAlongTheEdgeItLiesAt_data()
    {
        QTest::addColumn<QRectF>("bounds");
        QTest::addColumn<bool>("atBottom");
        QTest::addColumn<bool>("atTop");
        QTest::newRow("at the bottom") << QRectF(0, 840, 1440, 60) << true << false;
        QTest::newRow("short, at the bottom") << QRectF(600, 840, 240, 60) << true << false;
        QTest::newRow("a little above the bottom") << QRectF(0, 832, 1440, 60) << true << false;
        QTest::newRow("too far above the bottom") << QRectF(0, 831, 1440, 60) << false << false;
        QTest::newRow("at the top") << QRectF(0, 0, 1440, 28) << false << true;
        QTest::newRow("a little below the top") << QRectF(0, 8, 1440, 28) << false << true;
        QTest::newRow("too far below the top") << QRectF(0, 9, 1440, 28) << false << false;
        QTest::newRow("at the side, to the bottom") << QRectF(0, 100, 60, 800) << false << false;
        QTest::newRow("tucked away") << QRectF(0, 892, 1440, 8) << false << false;
        QTest::newRow("just coming up") << QRectF(0, 891, 1440, 9) << true << false;
        QTest::newRow("slid over the edge") << QRectF(600, 892, 240, 60) << false << false;
        QTest::newRow("a short strip") << QRectF(688, 899, 64, 1) << false << false;
        QTest::newRow("a spot") << QRectF(700, 892, 8, 8) << false << false;
        QTest::newRow("on the screen to the right") << QRectF(1440, 840, 1440, 60) << false << false;
        QTest::newRow("on the screen below") << QRectF(0, 1700, 1440, 60) << false << false;
        QTest::newRow("nowhere") << QRectF() << false << false;
    }

    void aDockShowsAlongTheEdgeItLiesAt()
    {
        QFETCH(QRectF, bounds);
        QTEST(showsDockAlongBottom(dock(bounds), screen), "atBottom");
        QTEST(showsDockAlongTop(dock(bounds), screen), "atTop");
    }

    void onlyAnotherProgramsDockIsOne()
    {
        WindowDescription window = dock({0, 840, 1440, 60});
        window.kind = WindowKind::normal;
        QVERIFY(!showsDockAlongBottom(window, screen));
        window.kind = std::nullopt;
        QVERIFY(!showsDockAlongBottom(window, screen));
        window = dock({0, 840, 1440, 60});
        window.bounds = std::nullopt;
        QVERIFY(!showsDockAlongBottom(window, screen));
        window = dock({0, 840, 1440, 60});
        window.ownerProcess = std::nullopt;
        QVERIFY(showsDockAlongBottom(window, screen));
        window.ownerProcess = QCoreApplication::applicationPid();
        QVERIFY(!showsDockAlongBottom(window, screen));
    }

    void thePrimaryScreenIsWhereTheWindowsCountFrom()
    {
        const auto primary = test::FakeScreens::screen({0, 0, 1440, 900});
        const auto left = test::FakeScreens::screen({-1920, 0, 1920, 1080});
        QCOMPARE(primaryScreenBounds({left, primary}), QRectF(0, 0, 1440, 900));
        QCOMPARE(primaryScreenBounds({left}), std::nullopt);
        QCOMPARE(primaryScreenBounds({}), std::nullopt);
    }
};

MOORLINE_TEST(DockWindowRuleTest);
#include "DockWindowRuleTest.moc"

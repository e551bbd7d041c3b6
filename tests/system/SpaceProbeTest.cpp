#include "system/SpaceProbe.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeWindowServer.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const auto fullScreen = std::optional(true);
const auto ordinary = std::optional(false);
const std::optional<bool> cannotTell;
const std::optional<QString> nameless;

} // namespace

class SpaceProbeTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void spaceIsFullScreenWhenItsTypeIsFour_data()
    {
        QTest::addColumn<std::optional<qint64>>("type");
        QTest::addColumn<std::optional<bool>>("expected");
        QTest::newRow("user's") << std::optional<qint64>(0) << ordinary;
        QTest::newRow("system's") << std::optional<qint64>(2) << ordinary;
        QTest::newRow("full-screen") << std::optional<qint64>(4) << fullScreen;
        QTest::newRow("five") << std::optional<qint64>(5) << ordinary;
        QTest::newRow("unknown") << std::optional<qint64>() << cannotTell;
    }

    void spaceIsFullScreenWhenItsTypeIsFour()
    {
        QFETCH(std::optional<qint64>, type);
        QTEST(probe({{main, type}}), "expected");
    }

    void systemWithoutTheQueryCannotTell()
    {
        test::FakeWindowServer server;
        server.displayUUID = main;
        QCOMPARE(SpaceProbe(server).isActiveSpaceFullScreen(), cannotTell);
    }

    void unknownMainDisplayCannotTell()
    {
        test::FakeWindowServer server;
        server.spaces = QList{DisplaySpace{main, 4}};
        QCOMPARE(SpaceProbe(server).isActiveSpaceFullScreen(), cannotTell);
    }

    void noDisplayCannotTell() { QCOMPARE(probe({}), cannotTell); }

    void mainDisplayIsAsked()
    {
        QCOMPARE(probe({{QStringLiteral("other"), 4}, {main, 0}}), ordinary);
        QCOMPARE(probe({{QStringLiteral("other"), 0}, {main, 4}}), fullScreen);
        QCOMPARE(probe({{nameless, std::nullopt}, {nameless, 7}, {main, 4}}), fullScreen);
    }

    void firstDisplayIsAskedWhenNoneIsTheMainOne()
    {
        QCOMPARE(probe({{QStringLiteral("a"), 4}, {QStringLiteral("b"), 0}}), fullScreen);
        QCOMPARE(probe({{nameless, 0}, {nameless, 4}}), ordinary);
        QCOMPARE(probe({{nameless, std::nullopt}, {QStringLiteral("b"), 4}}), cannotTell);
    }

    void theSpaceCountsBeforeTheWindows()
    {
        test::FakeWindowServer server;
        server.windows = {film(true)};
        server.setSpaceType(0);
        QVERIFY(!SpaceProbe(server).isFullScreen(m_screen));
        server.windows = {film(false)};
        server.setSpaceType(4);
        QVERIFY(SpaceProbe(server).isFullScreen(m_screen));
    }

    void theStatesOfTheWindowsCountBeforeTheGuess()
    {
        test::FakeWindowServer server;
        server.windows = {film(false)};
        QVERIFY(!SpaceProbe(server).isFullScreen(m_screen));
        server.windows->first().isFullScreen = true;
        QVERIFY(SpaceProbe(server).isFullScreen(m_screen));
    }

    void whereNothingElseTellsThereIsTheGuess()
    {
        test::FakeWindowServer server;
        server.windows = {film(std::nullopt)};
        QVERIFY(SpaceProbe(server).isFullScreen(m_screen));
        server.windows = std::nullopt;
        QVERIFY(!SpaceProbe(server).isFullScreen(m_screen));
    }

    void withoutAScreenOnlyTheSpaceTells()
    {
        test::FakeWindowServer server;
        server.windows = {film(true)};
        QVERIFY(!SpaceProbe(server).isFullScreen(std::nullopt));
        server.setSpaceType(4);
        QVERIFY(SpaceProbe(server).isFullScreen(std::nullopt));
    }

private:
    static inline const QString main = QStringLiteral("main");

    static std::optional<bool> probe(const QList<DisplaySpace> &displays)
    {
        test::FakeWindowServer server;
        server.displayUUID = main;
        server.spaces = displays;
        return SpaceProbe(server).isActiveSpaceFullScreen();
    }

    /// A window that covers the screen.
    static WindowDescription film(std::optional<bool> isFullScreen)
    {
        return {.ownerProcess = 7,
            .layer = 0,
            .bounds = QRectF(0, 0, 1440, 900),
            .kind = WindowKind::normal,
            .isFullScreen = isFullScreen};
    }

    Screen m_screen = test::FakeScreens::screen({0, 0, 1440, 900});
};

MOORLINE_TEST(SpaceProbeTest);
#include "SpaceProbeTest.moc"

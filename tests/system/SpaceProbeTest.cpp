#include "system/SpaceProbe.h"
#include "fakes/FakeWindowServer.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const auto fullScreen = std::optional(true);
const auto ordinary = std::optional(false);
const std::optional<bool> cannotTell;

QVariantMap space(const QVariant &type)
{
    return {{QStringLiteral("type"), type}};
}

QVariant display(const QVariant &identifier, const QVariant &currentSpace)
{
    return QVariantMap{
        {QStringLiteral("Display Identifier"), identifier}, {QStringLiteral("Current Space"), currentSpace}};
}

} // namespace

class SpaceProbeTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void spaceIsFullScreenWhenItsTypeIsFour_data()
    {
        QTest::addColumn<QVariant>("type");
        QTest::addColumn<std::optional<bool>>("expected");
        QTest::newRow("user's") << QVariant(0) << ordinary;
        QTest::newRow("system's") << QVariant(2) << ordinary;
        QTest::newRow("full-screen") << QVariant(4) << fullScreen;
        QTest::newRow("full-screen, 64 bits") << QVariant(qint64(4)) << fullScreen;
        QTest::newRow("full-screen, unsigned") << QVariant(4U) << fullScreen;
        QTest::newRow("five") << QVariant(5) << ordinary;
        QTest::newRow("text") << QVariant(QStringLiteral("4")) << cannotTell;
        QTest::newRow("missing") << QVariant() << cannotTell;
        QTest::newRow("list") << QVariant(QVariantList{4}) << cannotTell;
    }

    void spaceIsFullScreenWhenItsTypeIsFour()
    {
        QFETCH(QVariant, type);
        QTEST(probe({display(main, space(type))}), "expected");
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
        server.spaces = QVariantList{display(main, space(4))};
        QCOMPARE(SpaceProbe(server).isActiveSpaceFullScreen(), cannotTell);
    }

    void noDisplayCannotTell() { QCOMPARE(probe({}), cannotTell); }

    void mainDisplayIsAsked()
    {
        QCOMPARE(probe({display(QStringLiteral("other"), space(4)), display(main, space(0))}), ordinary);
        QCOMPARE(probe({display(QStringLiteral("other"), space(0)), display(main, space(4))}), fullScreen);
    }

    void firstDisplayIsAskedWhenNoneIsTheMainOne()
    {
        QCOMPARE(probe({display(QStringLiteral("a"), space(4)), display(QStringLiteral("b"), space(0))}), fullScreen);
        QCOMPARE(probe({display(5, space(0)), display({}, space(4))}), ordinary);
    }

    void displayWithoutACurrentSpaceCannotTell()
    {
        QCOMPARE(probe({display(main, {})}), cannotTell);
        QCOMPARE(probe({display(main, QStringLiteral("4"))}), cannotTell);
        QCOMPARE(probe({display(main, QVariantList{4})}), cannotTell);
        QCOMPARE(probe({display(main, QVariantMap())}), cannotTell);
    }

    void displayThatIsNoDictionaryCannotTell()
    {
        QCOMPARE(probe({QStringLiteral("main")}), cannotTell);
        QCOMPARE(probe({QVariant()}), cannotTell);
    }

    void mainDisplayAmongNonsenseIsFound()
    {
        QCOMPARE(probe({QStringLiteral("main"), 7, display(main, space(4))}), fullScreen);
    }

private:
    static inline const QString main = QStringLiteral("main");

    static std::optional<bool> probe(const QVariantList &displays)
    {
        test::FakeWindowServer server;
        server.displayUUID = main;
        server.spaces = displays;
        return SpaceProbe(server).isActiveSpaceFullScreen();
    }
};

MOORLINE_TEST(SpaceProbeTest);
#include "SpaceProbeTest.moc"

#include "harness/TestCase.h"
#include "platform/DesktopDock.h"

using namespace moorline;

namespace {

using Edge = DesktopDock::Edge;
using Hiding = DesktopDock::Hiding;
using Kind = DesktopDock::Kind;

DesktopDock gnome(Edge edge, Hiding hiding)
{
    return {.kind = Kind::gnome, .id = 100, .edge = edge, .hiding = hiding, .revealDelay = 0.25};
}

DesktopDock plank(Edge edge, Hiding hiding)
{
    return {.kind = Kind::plank, .id = 101, .edge = edge, .hiding = hiding, .program = QStringLiteral("plank")};
}

const QRectF screen(0, 0, 1000, 800);

/// What a panel keeps of the left, the top, the right and the bottom.
DesktopDock panel(quint64 id, const QMarginsF &reserved)
{
    return {.kind = Kind::panel, .id = id, .reserved = reserved};
}

DesktopDock atBottom(quint64 id, qreal height)
{
    return panel(id, {0, 0, 0, height});
}

/// The id of the chosen dock; 0 for none.
quint64 chosen(const QList<DesktopDock> &docks)
{
    DesktopDockRule rule;
    const auto choice = rule.choose(docks, screen);
    return choice ? choice->dock.id : 0;
}

} // namespace

class DesktopDockRuleTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void onlyADockThatLeavesByItselfHides_data()
    {
        QTest::addColumn<Hiding>("hiding");
        QTest::addColumn<bool>("hides");
        QTest::newRow("never") << Hiding::never << false;
        QTest::newRow("from windows") << Hiding::fromWindows << false;
        QTest::newRow("by itself") << Hiding::byItself << true;
    }

    void onlyADockThatLeavesByItselfHides()
    {
        QFETCH(Hiding, hiding);
        DesktopDockRule rule;
        const auto choice = rule.choose({gnome(Edge::bottom, hiding)}, screen);
        QVERIFY(choice);
        QTEST(choice->hides, "hides");
        QCOMPARE(choice->edge, Edge::bottom);
        QCOMPARE(choice->dock, gnome(Edge::bottom, hiding));
    }

    void aPanelLiesAtTheEdgeOfWhichItKeepsMoreThanAStrip_data()
    {
        QTest::addColumn<QMarginsF>("reserved");
        QTest::addColumn<std::optional<Edge>>("edge");
        QTest::newRow("bottom") << QMarginsF(0, 0, 0, 40) << std::optional(Edge::bottom);
        QTest::newRow("left") << QMarginsF(40, 0, 0, 0) << std::optional(Edge::left);
        QTest::newRow("right") << QMarginsF(0, 0, 40, 0) << std::optional(Edge::right);
        QTest::newRow("top") << QMarginsF(0, 40, 0, 0) << std::optional<Edge>();
        QTest::newRow("nothing") << QMarginsF() << std::optional<Edge>();
        QTest::newRow("a strip of 8") << QMarginsF(0, 0, 0, 8) << std::optional<Edge>();
        QTest::newRow("more than a strip") << QMarginsF(0, 0, 0, 8.5) << std::optional(Edge::bottom);
    }

    void aPanelLiesAtTheEdgeOfWhichItKeepsMoreThanAStrip()
    {
        QFETCH(QMarginsF, reserved);
        QFETCH(std::optional<Edge>, edge);
        DesktopDockRule rule;
        const auto choice = rule.choose({panel(1, reserved)}, screen);
        QCOMPARE(choice.has_value(), edge.has_value());
        QVERIFY(!choice || (choice->edge == *edge && !choice->hides));
    }

    void whatLiesAtTheBottomForGoodComesFirst_data()
    {
        QTest::addColumn<QList<DesktopDock>>("docks");
        QTest::addColumn<quint64>("expected");
        const DesktopDock hiding = gnome(Edge::bottom, Hiding::byItself);
        const DesktopDock aside = gnome(Edge::left, Hiding::never);
        const DesktopDock beside = panel(1, {40, 0, 0, 0});
        const auto row = [](const char *name, const QList<DesktopDock> &docks, quint64 expected) {
            QTest::newRow(name) << docks << expected;
        };
        row("none", {}, 0);
        row("a dock", {hiding}, 100);
        row("the first of two docks", {hiding, plank(Edge::bottom, Hiding::byItself)}, 100);
        row("the dock that stays", {hiding, plank(Edge::bottom, Hiding::never)}, 101);
        row("the dock that dodges", {hiding, plank(Edge::bottom, Hiding::fromWindows)}, 101);
        row("the panel below a hiding dock", {hiding, atBottom(1, 40)}, 1);
        row("the panel below a dock at the side", {aside, atBottom(1, 40)}, 1);
        row("the dock that stays, before a panel", {plank(Edge::bottom, Hiding::never), atBottom(1, 40)}, 101);
        row("a hiding dock before a panel at the side", {hiding, beside}, 100);
        row("a dock at the side before a panel there", {aside, beside}, 100);
        row("the panel at the bottom of two", {beside, atBottom(2, 40)}, 2);
        row("the panel at the side", {panel(3, {}), beside}, 1);
        row("a panel that reserves nothing", {panel(3, {})}, 0);
    }

    void whatLiesAtTheBottomForGoodComesFirst()
    {
        QFETCH(QList<DesktopDock>, docks);
        QTEST(chosen(docks), "expected");
    }

    void onlyWhatLiesOnThePrimaryScreenConcernsTheBar_data()
    {
        QTest::addColumn<QRectF>("frame");
        QTest::addColumn<bool>("concerns");
        QTest::newRow("along its bottom") << QRectF(0, 760, 1000, 40) << true;
        QTest::newRow("on the screen beside it") << QRectF(1000, 760, 1000, 40) << false;
        QTest::newRow("on the screen above it") << QRectF(0, -40, 1000, 40) << false;
        QTest::newRow("on the screen below it") << QRectF(0, 1560, 1000, 40) << false;
        QTest::newRow("across both") << QRectF(0, 760, 2000, 40) << true;
        QTest::newRow("with its last point") << QRectF(999, 760, 1000, 40) << true;
    }

    void onlyWhatLiesOnThePrimaryScreenConcernsTheBar()
    {
        QFETCH(QRectF, frame);
        QFETCH(bool, concerns);
        DesktopDock dock = plank(Edge::bottom, Hiding::never);
        dock.frame = frame;
        QCOMPARE(chosen({dock}) == dock.id, concerns);
        DesktopDock wide = atBottom(1, 40);
        wide.frame = frame;
        QCOMPARE(chosen({wide, atBottom(2, 40)}), concerns ? 1U : 2U);
    }

    void aPanelThatTucksAwayElsewhereHidesHereToo()
    {
        DesktopDockRule rule;
        DesktopDock dock = atBottom(1, 4);
        dock.frame = QRectF(1000, 760, 1000, 40);
        QVERIFY(!rule.choose({dock}, screen));
        dock.frame = QRectF(0, 760, 1000, 40);
        dock.reserved = {0, 0, 0, 40};
        QVERIFY(!rule.choose({dock}, screen));
    }

    void aPanelOnceSeenTuckedAwayHidesAlsoWhileItShowsItself()
    {
        DesktopDockRule rule;
        QVERIFY(!rule.choose({atBottom(1, 4)}, screen));
        QVERIFY(!rule.choose({atBottom(1, 40)}, screen));
        QVERIFY(rule.choose({atBottom(1, 40), atBottom(2, 40)}, screen));
        QVERIFY(!rule.choose({atBottom(1, 40)}, screen));
        // Another panel may get the number of one that went.
        QVERIFY(!rule.choose({}, screen));
        QVERIFY(rule.choose({atBottom(1, 40)}, screen));
    }

    void itIsToldOfInTheWordsOfTheDomain_data()
    {
        QTest::addColumn<Edge>("edge");
        QTest::addColumn<bool>("hides");
        QTest::addColumn<QString>("orientation");
        QTest::addColumn<bool>("autohide");
        QTest::newRow("bottom") << Edge::bottom << false << QStringLiteral("bottom") << false;
        QTest::newRow("bottom, hiding") << Edge::bottom << true << QStringLiteral("bottom") << true;
        QTest::newRow("left") << Edge::left << false << QStringLiteral("left") << false;
        QTest::newRow("right") << Edge::right << false << QStringLiteral("right") << false;
        QTest::newRow("the top is never in the way") << Edge::top << false << QStringLiteral("left") << true;
    }

    void itIsToldOfInTheWordsOfTheDomain()
    {
        QFETCH(Edge, edge);
        QFETCH(bool, hides);
        const DesktopDockRule::Choice choice{{}, edge, hides};
        QTEST(dockPreference(choice, QStringLiteral("orientation")).toString(), "orientation");
        QTEST(dockPreference(choice, QStringLiteral("autohide")).toBool(), "autohide");
        QCOMPARE(dockPreference(choice, QStringLiteral("autohide-delay")), QVariant());
    }

    void theDelayIsToldWhereThereIsOne()
    {
        DesktopDockRule rule;
        const auto choice = rule.choose({gnome(Edge::bottom, Hiding::never)}, screen);
        QCOMPARE(dockPreference(choice, QStringLiteral("autohide-delay")), QVariant(0.25));
        QCOMPARE(dockPreference(choice, QStringLiteral("tilesize")), QVariant());
    }

    void noDockIsOneThatHidesAtTheBottom()
    {
        QCOMPARE(dockPreference(std::nullopt, QStringLiteral("orientation")), QVariant(QStringLiteral("bottom")));
        QCOMPARE(dockPreference(std::nullopt, QStringLiteral("autohide")), QVariant(true));
        QCOMPARE(dockPreference(std::nullopt, QStringLiteral("autohide-delay")), QVariant());
    }
};

MOORLINE_TEST(DesktopDockRuleTest);
#include "DesktopDockRuleTest.moc"

#include "ShortcutDrag.h"
#include "harness/TestCase.h"
#include "settings/Reordered.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

/// Icons that are carried over one another.
class ShortcutDragTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void carriedOverAnotherItTakesItsPlace_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QString>("order");
        QTest::newRow("first over the third") << first << third << QStringLiteral("Finder Mail Notes");
        QTest::newRow("third over the first") << third << first << QStringLiteral("Mail Notes Finder");
        QTest::newRow("first over the second") << first << second << QStringLiteral("Finder Notes Mail");
        QTest::newRow("second over the first") << second << first << QStringLiteral("Finder Notes Mail");
        QTest::newRow("over itself") << second << second << QStringLiteral("Notes Finder Mail");
        QTest::newRow("above an icon") << first << QPoint(144, 2) << QStringLiteral("Finder Mail Notes");
        QTest::newRow("below an icon") << first << QPoint(144, 90) << QStringLiteral("Finder Mail Notes");
    }

    void carriedOverAnotherItTakesItsPlace()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QString, order);
        ShortcutDrag fixture;
        const AppShortcut carried = fixture.row->buttons()[(from.x() - 20) / 52]->shortcut();
        fixture.drag(from, [&] {
            QCOMPARE(fixture.carryTo(to, carried), Qt::MoveAction);
            QCOMPARE(fixture.names(), order);
            QCOMPARE(fixture.storedNames(), order);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.names(), order);
        QCOMPARE(fixture.storedNames(), order);
    }

    void everyPlaceItTakesIsWrittenAtOnce()
    {
        ShortcutDrag fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Notes Mail"));
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Mail Notes"));
            QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction);
        });
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Notes Mail"));
        QCOMPARE(fixture.written.size(), 3);
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.storedNames(), QStringLiteral("Finder Notes Mail"));
        QCOMPARE(fixture.written.size(), 3);
    }

    void anOrderThatIsTheSameIsNotWritten()
    {
        ShortcutDrag fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(first + QPoint(3, 0), fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.carryTo(first, fixture.notes), Qt::MoveAction);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.written.size(), 0);
    }

    void betweenTwoIconsNothingMoves()
    {
        ShortcutDrag fixture;
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo({69, 40}, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.names(), QStringLiteral("Notes Finder Mail"));
            QCOMPARE(fixture.carryTo({72, 40}, fixture.notes), Qt::MoveAction);
            QCOMPARE(fixture.names(), QStringLiteral("Finder Notes Mail"));
        });
        fixture.letGoAt(onTheBar);
    }

    void aQuickPointerCarriesItAllTheWay_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QString>("order");
        QTest::newRow("beyond the right end") << first << QPoint(171, 40) << QStringLiteral("Finder Mail Notes");
        QTest::newRow("far beyond it") << second << QPoint(290, 90) << QStringLiteral("Notes Mail Finder");
        QTest::newRow("beyond the left end") << third << QPoint(19, 40) << QStringLiteral("Mail Notes Finder");
        QTest::newRow("far beyond it, there") << second << QPoint(2, 5) << QStringLiteral("Finder Notes Mail");
        QTest::newRow("the last one beyond its end") << third << QPoint(290, 40) << QStringLiteral("Notes Finder Mail");
        QTest::newRow("between the others, from the left")
            << first << QPoint(120, 40) << QStringLiteral("Finder Notes Mail");
        QTest::newRow("between the others, from the right")
            << third << QPoint(69, 40) << QStringLiteral("Notes Mail Finder");
    }

    void aQuickPointerCarriesItAllTheWay()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QString, order);
        ShortcutDrag fixture;
        fixture.putIntoABar();
        const AppShortcut carried = fixture.row->buttons()[(from.x() - 20) / 52]->shortcut();
        fixture.drag(from, [&] {
            QCOMPARE(fixture.carryTo(to, carried), Qt::MoveAction);
            QCOMPARE(fixture.names(), order);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.storedNames(), order);
    }

    void theRowIsAsLargeAsTheBarOnlyWhileAnIconIsCarried_data()
    {
        QTest::addColumn<bool>("isCancelled");
        QTest::newRow("let go") << false;
        QTest::newRow("cancelled") << true;
    }

    void theRowIsAsLargeAsTheBarOnlyWhileAnIconIsCarried()
    {
        QFETCH(bool, isCancelled);
        ShortcutDrag fixture;
        fixture.putIntoABar();
        const QRectF rest = fixture.row->boundingRect();
        QCOMPARE(rest, QRectF(0, -24, 150, 100));
        fixture.drag(first, [&] {
            QCOMPARE(fixture.row->boundingRect(), QRectF(-20, -24, 300, 104));
            if (isCancelled)
                fixture.platform.popupWindows.pressEscape();
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.row->boundingRect(), rest);
    }

    void buttonsSlideToTheirPlaces()
    {
        ShortcutDrag fixture;
        const auto before = fixture.row->buttons();
        fixture.drag(first, [&] {
            QCOMPARE(fixture.carryTo(third, fixture.notes), Qt::MoveAction);
            QCOMPARE(before[0]->x(), 0.0);
            fixture.platform.clock.advance(16ms);
            const Spring spring{.response = 0.3, .damping = 0.75};
            QVERIFY(std::abs(before[0]->x() - 104 * spring.valueAt(0.016)) < 1e-6);
            QVERIFY(std::abs(before[1]->x() - (52 - 52 * spring.valueAt(0.016))) < 1e-6);
            fixture.platform.clock.advance(1s);
            QCOMPARE(before[0]->x(), 104.0);
            QCOMPARE(before[1]->x(), 0.0);
            QCOMPARE(before[2]->x(), 52.0);
        });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.row->buttons(), (QList{before[1], before[2], before[0]}));
        QCOMPARE(before[0]->x(), 104.0);
    }

    void whatSlidesGoesOnWhenTheOrderIsWritten()
    {
        ShortcutDrag fixture;
        AppShortcutButton *carried = fixture.row->buttons().first();
        fixture.drag(first, [&] { QCOMPARE(fixture.carryTo(second, fixture.notes), Qt::MoveAction); });
        fixture.letGoAt(onTheBar);
        QCOMPARE(fixture.written.size(), 1);
        QVERIFY(carried->x() > 0 && carried->x() < 52);
        fixture.platform.clock.advance(1s);
        QCOMPARE(carried->x(), 52.0);
    }

    void reorderedFollowsTheIds()
    {
        const IconsFixture known;
        const AppShortcut again{
            QStringLiteral("/other/Mail.app"), known.mail.bundleIdentifier, QStringLiteral("Mail 2")};
        const QList<AppShortcut> shortcuts{known.mail, known.notes, again, known.finder};
        QCOMPARE(reordered(shortcuts, {known.finder.id(), known.mail.id(), known.notes.id(), known.mail.id()}),
            (QList{known.finder, known.mail, known.notes, again}));
        QCOMPARE(reordered(shortcuts, {known.notes.id(), QStringLiteral("gone")}),
            (QList{known.notes, known.mail, again, known.finder}));
        QCOMPARE(reordered(shortcuts, {}), shortcuts);
    }
};

MOORLINE_TEST(ShortcutDragTest);
#include "ShortcutDragTest.moc"

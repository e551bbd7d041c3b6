#include "IconsFixture.h"
#include "fakes/FakeDropTransfer.h"
#include "harness/TestCase.h"

#include <QRegularExpression>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture : IconsFixture {
    explicit Fixture(const std::optional<AppShortcut> &shortcut = std::nullopt)
        : button(new AppShortcutButton(context(), shortcut.value_or(notes), true))
    {
        button->setPos(20, 20);
        hand.scene.addItem(button);
        files.setUrls({file("/tmp/b.txt"), file("/tmp/a b.txt")});
    }

    static QUrl file(const char *path) { return QUrl::fromLocalFile(QString::fromUtf8(path)); }

    Hand hand;
    AppShortcutButton *button;
    QMimeData files;
};

constexpr QPoint onTheIcon(40, 40);
constexpr Qt::DropActions any = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

} // namespace

/// What happens to files that are held over an icon, and dropped on it.
class IconDropTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void filesAreOpenedWithTheApplicationInTheirOrder()
    {
        Fixture fixture;
        QVERIFY(fixture.hand.dragOver(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        QVERIFY(fixture.hand.letGo(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        QCOMPARE(fixture.platform.workspace.openings.size(), 1);
        QCOMPARE(fixture.platform.workspace.openings.first().path, fixture.notes.path);
        QCOMPARE(fixture.platform.workspace.openings.first().files,
            (QList{Fixture::file("/tmp/b.txt"), Fixture::file("/tmp/a b.txt")}));
    }

    void theFileManagerShowsThem()
    {
        Fixture fixture(IconsFixture().finder);
        QVERIFY(fixture.hand.dragOver(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        QVERIFY(fixture.hand.letGo(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        QVERIFY(fixture.platform.workspace.openings.isEmpty());
        QCOMPARE(fixture.platform.workspace.revealed,
            (QList<QList<QUrl>>{{Fixture::file("/tmp/b.txt"), Fixture::file("/tmp/a b.txt")}}));
    }

    void theIconGrowsWhileTheyAreHeldOverIt()
    {
        Fixture fixture;
        QVERIFY(fixture.hand.dragOver(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        fixture.platform.clock.advance(16ms);
        const Spring spring{.response = 0.25, .damping = 0.7};
        QVERIFY(std::abs(fixture.button->iconScale() - (1 + 0.16 * spring.valueAt(0.016))) < 1e-9);
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.button->iconScale(), 1.16);
        fixture.hand.dragAway();
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.button->iconScale(), 1.0);
    }

    void theIconIsAsItWasAfterTheDrop()
    {
        Fixture fixture;
        QVERIFY(fixture.hand.dragOver(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        fixture.platform.clock.advance(1s);
        QVERIFY(fixture.hand.letGo(onTheIcon, fixture.files, any) != Qt::IgnoreAction);
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.button->iconScale(), 1.0);
    }

    void theAnswerIsCopyOrLinkAndNeverMove_data()
    {
        QTest::addColumn<Qt::DropActions>("possible");
        QTest::addColumn<Qt::DropAction>("answer");
        QTest::newRow("any") << any << Qt::LinkAction;
        QTest::newRow("copy or move") << Qt::DropActions(Qt::CopyAction | Qt::MoveAction) << Qt::CopyAction;
        QTest::newRow("copy") << Qt::DropActions(Qt::CopyAction) << Qt::CopyAction;
        QTest::newRow("move") << Qt::DropActions(Qt::MoveAction) << Qt::IgnoreAction;
    }

    void theAnswerIsCopyOrLinkAndNeverMove()
    {
        QFETCH(Qt::DropActions, possible);
        QFETCH(Qt::DropAction, answer);
        Fixture fixture;
        QCOMPARE(fixture.hand.dragOver(onTheIcon, fixture.files, possible), answer);
        QCOMPARE(fixture.button->isDropHovered(), answer != Qt::IgnoreAction);
        QCOMPARE(fixture.hand.letGo(onTheIcon, fixture.files, possible), answer);
        QCOMPARE(fixture.platform.workspace.openings.size(), answer == Qt::IgnoreAction ? 0 : 1);
    }

    void whatIsSlowToArriveIsOpenedThen()
    {
        Fixture fixture;
        LetGo letGo;
        const auto transfer = std::make_shared<FakeDropTransfer>(letGo);
        const ArrivingDrop arriving({QStringLiteral("text/uri-list")}, transfer);
        QCOMPARE(fixture.hand.dragOver(onTheIcon, arriving, any), Qt::LinkAction);
        QCOMPARE(fixture.hand.letGo(onTheIcon, arriving, any), Qt::LinkAction);
        QVERIFY(fixture.platform.workspace.openings.isEmpty());
        transfer->arrive("file:///tmp/b.txt\r\nfile:///tmp/a%20b.txt\r\n");
        QCOMPARE(fixture.platform.workspace.openings.size(), 1);
        QCOMPARE(fixture.platform.workspace.openings.first().files,
            (QList{Fixture::file("/tmp/b.txt"), Fixture::file("/tmp/a b.txt")}));
        QCOMPARE(letGo.answers, QList{Qt::LinkAction});
    }

    void whatWouldOnlyBeMovedIsNotPinnedByTheBarBelow()
    {
        Fixture fixture;
        auto *below = new TrialItem(QRectF(0, 0, 200, 90));
        below->taken = {QStringLiteral("text/uri-list")};
        below->onDrop = [] {};
        fixture.hand.scene.addItem(below);
        fixture.button->setParentItem(below);
        QCOMPARE(fixture.hand.dragOver(onTheIcon, fixture.files, Qt::MoveAction), Qt::IgnoreAction);
        QVERIFY(!below->isDropHovered());
    }

    void whatTakesNoFilesRefusesThemAndDoesNotGrow()
    {
        Fixture fixture;
        fixture.install(fixture.notes, false);
        fixture.platform.appBundles.change();
        QCOMPARE(fixture.hand.dragOver(onTheIcon, fixture.files, any), Qt::IgnoreAction);
        QVERIFY(!fixture.button->isDropHovered());
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.button->iconScale(), 1.0);
    }

    void whatIsLetGoOnWhatTakesNoFilesIsLogged()
    {
        Fixture fixture;
        fixture.install(fixture.notes, false);
        fixture.platform.appBundles.change();
        fixture.button->setStage(&fixture.stage);
        QCOMPARE(fixture.hand.dragOver(onTheIcon, fixture.files, any), Qt::IgnoreAction);
        QTest::ignoreMessage(QtInfoMsg, "Moorline: Notes refused the drop: it takes no files");
        QCOMPARE(fixture.hand.letGo(onTheIcon, fixture.files, any), Qt::IgnoreAction);
        QVERIFY(fixture.platform.workspace.openings.isEmpty());
    }

    void textIsNotTaken()
    {
        Fixture fixture;
        QMimeData text;
        text.setText(QStringLiteral("/tmp/a"));
        QCOMPARE(fixture.hand.dragOver(onTheIcon, text, any), Qt::IgnoreAction);
        QVERIFY(!fixture.button->isDropHovered());
    }

    void addressesThatAreNoFilesOpenNothing()
    {
        Fixture fixture;
        QMimeData link;
        link.setUrls({QUrl(QStringLiteral("https://example.org"))});
        // The formats do not tell whether any of it is a file, and nothing more is asked for until it is dropped.
        QVERIFY(fixture.hand.dragOver(onTheIcon, link, any) != Qt::IgnoreAction);
        QCOMPARE(fixture.hand.letGo(onTheIcon, link, any), Qt::IgnoreAction);
        QVERIFY(fixture.platform.workspace.openings.isEmpty());
    }
};

MOORLINE_TEST(IconDropTest);
#include "IconDropTest.moc"

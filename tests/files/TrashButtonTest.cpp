#include "files/TrashButton.h"

#include "FilesFixture.h"
#include "harness/TestCase.h"

#include <QPointer>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture : FilesFixture {
    Fixture()
    {
        store.change([](Settings &settings) { settings.showTrash = true; });
        trash->setPos(20, 20);
        trash->setStage(&stage);
        hand.scene.addItem(trash);
    }

    Qt::DropAction drop(const QList<QUrl> &urls)
    {
        QMimeData data;
        data.setUrls(urls);
        static_cast<void>(hand.dragOver(place, data, Qt::CopyAction));
        return hand.letGo(place, data, Qt::CopyAction);
    }
    [[nodiscard]] qsizetype looks() const { return platform.trashBin.looks.size(); }
    /// What is painted in the middle of the icon, when the system has answered in white.
    [[nodiscard]] QList<IconRequest> requestsOfPainting()
    {
        platform.icons.requested.clear();
        static_cast<void>(painted(hand.scene));
        return platform.icons.requested;
    }

    static constexpr QPoint place{40, 40};
    TrashButton *trash = new TrashButton(context());
};

} // namespace

class TrashButtonTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itIsEmptyUntilSomethingIsSeenInIt()
    {
        Fixture fixture;
        QVERIFY(!fixture.trash->isFull());
        QVERIFY(fixture.platform.trashBin.answer(true));
        QVERIFY(fixture.trash->isFull());
        fixture.platform.clock.advance(4s);
        QVERIFY(fixture.platform.trashBin.answer(false));
        QVERIFY(!fixture.trash->isFull());
    }

    void itLooksFourSecondsAfterEachAnswer()
    {
        Fixture fixture;
        QCOMPARE(fixture.looks(), 1);
        fixture.platform.clock.advance(60s);
        QCOMPARE(fixture.looks(), 1);
        QVERIFY(fixture.platform.trashBin.answer(false));
        fixture.platform.clock.advance(3999ms);
        QCOMPARE(fixture.looks(), 0);
        fixture.platform.clock.advance(1ms);
        QCOMPARE(fixture.looks(), 1);
    }

    void itLooksOnlyWhileItIsShown()
    {
        Fixture fixture;
        QVERIFY(fixture.platform.trashBin.answer(false));
        fixture.trash->hide();
        fixture.platform.clock.advance(60s);
        QCOMPARE(fixture.looks(), 0);
        fixture.trash->show();
        QCOMPARE(fixture.looks(), 1);
        QVERIFY(fixture.platform.trashBin.answer(false));
        fixture.hand.scene.removeItem(fixture.trash);
        fixture.platform.clock.advance(60s);
        QCOMPARE(fixture.looks(), 0);
        delete fixture.trash;
    }

    void hiddenUnderALookItStopsThere()
    {
        Fixture fixture;
        fixture.trash->hide();
        QVERIFY(fixture.platform.trashBin.answer(true));
        fixture.platform.clock.advance(60s);
        QCOMPARE(fixture.looks(), 0);
    }

    void anAnswerAfterItsEndReachesNobody()
    {
        Fixture fixture;
        delete fixture.trash;
        QVERIFY(fixture.platform.trashBin.answer(true));
    }

    void theImageIsTheSystems()
    {
        Fixture fixture;
        const IconRequest empty{
            .kind = IconKind::named, .subject = QStringLiteral("NSTrashEmpty"), .size = 46, .scale = 1};
        QCOMPARE(fixture.requestsOfPainting(), QList{empty});
        QVERIFY(fixture.platform.icons.answer(Qt::white));
        QVERIFY(fixture.platform.trashBin.answer(true));
        IconRequest full = empty;
        full.subject = QStringLiteral("NSTrashFull");
        QCOMPARE(fixture.requestsOfPainting(), QList{full});
    }

    void withoutAnImageItIsThatOfTheFolder()
    {
        Fixture fixture;
        static_cast<void>(fixture.requestsOfPainting());
        QVERIFY(fixture.platform.icons.miss());
        const IconRequest folder{
            .kind = IconKind::file, .subject = QStringLiteral("/home/me/.Trash"), .size = 46, .scale = 1};
        QCOMPARE(fixture.requestsOfPainting(), QList{folder});
        QVERIFY(fixture.platform.icons.miss());
        QVERIFY(fixture.requestsOfPainting().isEmpty());
        fixture.platform.icons.changeTheme();
        QCOMPARE(fixture.requestsOfPainting().value(0).subject, QStringLiteral("NSTrashEmpty"));
    }

    void withoutThatEitherASymbolStandsThere()
    {
        Fixture fixture;
        const auto &symbols = fixture.platform.symbolCatalogue.requests;
        static_cast<void>(fixture.requestsOfPainting());
        QVERIFY(fixture.platform.icons.miss());
        static_cast<void>(fixture.requestsOfPainting());
        // The folder may have an icon.
        QVERIFY(symbols.isEmpty());
        QVERIFY(fixture.platform.icons.miss());
        static_cast<void>(fixture.requestsOfPainting());
        QCOMPARE(symbols.last().name, QStringLiteral("trash"));
        QCOMPARE(symbols.last().pointSize, 46 * 0.7);
        QVERIFY(fixture.platform.trashBin.answer(true));
        static_cast<void>(fixture.requestsOfPainting());
        QCOMPARE(symbols.last().name, QStringLiteral("trash.fill"));
        // It gives way to an icon.
        QVERIFY(fixture.platform.icons.answer(Qt::white));
        const auto before = symbols.size();
        QCOMPARE(painted(fixture.hand.scene).pixelColor(43, 43), QColor(Qt::white));
        QCOMPARE(symbols.size(), before);
    }

    void itSaysWhatItIs()
    {
        Fixture fixture;
        QCOMPARE(fixture.trash->helpText(), QStringLiteral("Trash"));
        QCOMPARE(fixture.trash->description(),
            (BarItem::Description{QAccessible::Button, QStringLiteral("Trash"), QStringLiteral("Empty")}));
        QVERIFY(fixture.platform.trashBin.answer(true));
        QCOMPARE(fixture.trash->description().state, QStringLiteral("Full"));
    }

    void aClickOpensIt()
    {
        Fixture fixture;
        fixture.hand.click(Fixture::place);
        QCOMPARE(fixture.platform.trashBin.timesOpened, 1);
    }

    void theMenuOpensItAndHidesIt()
    {
        Fixture fixture;
        const Menu menu = fixture.trash->menu();
        QCOMPARE(titles(menu),
            (QStringList{QStringLiteral("Open Trash"), QStringLiteral("-"), QStringLiteral("Hide Trash from Dock")}));
        QVERIFY(choose(menu, QStringLiteral("Open Trash")));
        QCOMPARE(fixture.platform.trashBin.timesOpened, 1);
        QVERIFY(choose(menu, QStringLiteral("Hide Trash from Dock")));
        QVERIFY(!fixture.store.settings().showTrash);
    }

    void whatIsDroppedIsThrownAwayAndLookedForAtOnce()
    {
        Fixture fixture;
        QVERIFY(fixture.platform.trashBin.answer(false));
        const QUrl file = FilesFixture::file(QStringLiteral("a"));
        const QUrl folder = FilesFixture::file(QStringLiteral("b"));
        QCOMPARE(fixture.drop({file, FilesFixture::file(QStringLiteral("b/"))}), Qt::CopyAction);
        QCOMPARE(fixture.platform.files.trashings.size(), 2);
        QCOMPARE(fixture.platform.files.trashings[0].file, file);
        QCOMPARE(fixture.platform.files.trashings[1].file, folder);
        QVERIFY(fixture.platform.files.finishTrashing(true));
        QCOMPARE(fixture.looks(), 0);
        // One that cannot be thrown away stays, and that is all.
        QVERIFY(fixture.platform.files.finishTrashing(false));
        QCOMPARE(fixture.looks(), 1);
        QVERIFY(fixture.platform.trashBin.answer(true));
        QVERIFY(fixture.trash->isFull());
        QVERIFY(fixture.store.settings().pinnedItems.isEmpty());
    }

    void whatIsStuckKeepsNoOtherDropFromBeingLookedFor()
    {
        Fixture fixture;
        QVERIFY(fixture.platform.trashBin.answer(false));
        static_cast<void>(fixture.drop({FilesFixture::file(QStringLiteral("stuck"))}));
        static_cast<void>(fixture.drop({FilesFixture::file(QStringLiteral("a"))}));
        fixture.platform.files.trashings.move(1, 0);
        QVERIFY(fixture.platform.files.finishTrashing(true));
        QCOMPARE(fixture.looks(), 1);
    }

    void aLookFromBeforeTheDropDoesNotCount()
    {
        Fixture fixture;
        static_cast<void>(fixture.drop({FilesFixture::file(QStringLiteral("a"))}));
        QVERIFY(fixture.platform.files.finishTrashing(true));
        QCOMPARE(fixture.looks(), 2);
        QVERIFY(fixture.platform.trashBin.answer(false));
        fixture.platform.clock.advance(60s);
        QCOMPARE(fixture.looks(), 1);
        QVERIFY(fixture.platform.trashBin.answer(true));
        QVERIFY(fixture.trash->isFull());
        fixture.platform.clock.advance(4s);
        QCOMPARE(fixture.looks(), 1);
    }

    void whatIsNoFileIsNotThrownAway()
    {
        Fixture fixture;
        static_cast<void>(fixture.drop({QUrl(QStringLiteral("https://example.org/a"))}));
        QVERIFY(fixture.platform.files.trashings.isEmpty());
        QMimeData text;
        text.setText(QStringLiteral("a"));
        QCOMPARE(fixture.hand.dragOver(Fixture::place, text, Qt::CopyAction), Qt::IgnoreAction);
    }

    void bytesThatAreNoTextAreThrownAwayAsTheyAre()
    {
        Fixture fixture;
        QMimeData data;
        data.setData(QStringLiteral("text/uri-list"), "file:///home/me/a%FFb\r\n");
        static_cast<void>(fixture.hand.dragOver(Fixture::place, data, Qt::CopyAction));
        static_cast<void>(fixture.hand.letGo(Fixture::place, data, Qt::CopyAction));
        QCOMPARE(fixture.platform.files.trashings.value(0).file.toEncoded(), "file:///home/me/a%FFb");
    }

    void aButtonThatGoesLeavesWhatItBegan()
    {
        Fixture fixture;
        static_cast<void>(fixture.drop({FilesFixture::file(QStringLiteral("a"))}));
        delete fixture.trash;
        QVERIFY(fixture.platform.files.finishTrashing(true));
    }
};

MOORLINE_TEST(TrashButtonTest);
#include "TrashButtonTest.moc"

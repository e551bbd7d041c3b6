#include "files/DownloadsButton.h"

#include "FilesFixture.h"
#include "files/DownloadsRow.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture : FilesFixture {
    Fixture()
    {
        store.change([](Settings &settings) { settings.showDownloadsFolder = true; });
        button->setPos(20, 20);
        button->setStage(&stage);
        hand.scene.addItem(button);
    }

    /// As the bar passes a click on.
    void click()
    {
        if (!stage.takesPress(place, Qt::LeftButton))
            hand.click(place);
    }
    void answer(const QByteArrayList &names)
    {
        QList<FolderEntry> entries;
        for (const QByteArray &name : names)
            entries.append({.name = name});
        QVERIFY(platform.files.answer(entries));
    }
    [[nodiscard]] QString rows() const
    {
        QStringList names;
        for (const DownloadsRow *row : button->stack()->rows())
            names.append(row->text());
        return names.join(u' ');
    }

    static constexpr QPoint place{40, 40};
    DownloadsButton *button = new DownloadsButton(context());
    const QUrl folder = QUrl::fromLocalFile(QStringLiteral("/home/me/Downloads"));
};

QUrl download(const QString &name)
{
    return QUrl::fromLocalFile(QStringLiteral("/home/me/Downloads/") + name);
}

} // namespace

class DownloadsButtonTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itLooksLikeItsFolder()
    {
        Fixture fixture;
        static_cast<void>(painted(fixture.hand.scene));
        const IconRequest wanted{
            .kind = IconKind::file, .subject = QStringLiteral("/home/me/Downloads"), .size = 46, .scale = 1};
        QCOMPARE(fixture.platform.icons.requested, QList{wanted});
        QCOMPARE(fixture.button->helpText(), QStringLiteral("Downloads"));
        QCOMPARE(fixture.button->description().name, QStringLiteral("Downloads"));
    }

    void nothingIsReadBeforeAClick()
    {
        Fixture fixture;
        fixture.platform.clock.advance(1h);
        QVERIFY(fixture.platform.files.listings.isEmpty());
    }

    void aClickShowsTheStackAtOnceAndTheFilesWhenTheyAreKnown()
    {
        Fixture fixture;
        fixture.click();
        QCOMPARE(fixture.platform.files.listings.value(0).folder, QStringLiteral("/home/me/Downloads"));
        QVERIFY(fixture.open());
        QVERIFY(fixture.stage.isOpenAt(*fixture.button));
        // Nobody knows yet whether there are any.
        QCOMPARE(fixture.button->stack()->message(), QString());
        QVERIFY(fixture.button->stack()->rows().isEmpty());
        fixture.answer({"a", "b"});
        QCOMPARE(fixture.rows(), QStringLiteral("a b"));
    }

    void withoutFilesItSaysSo()
    {
        Fixture fixture;
        fixture.click();
        fixture.answer({});
        QCOMPARE(fixture.button->stack()->message(), QStringLiteral("No recent downloads"));
    }

    void aFolderThatCannotBeReadIsSaidToBeSo()
    {
        Fixture fixture;
        fixture.click();
        QVERIFY(fixture.platform.files.answer(std::nullopt));
        QCOMPARE(fixture.button->stack()->message(),
            QStringLiteral("Moorline needs permission to read Downloads.\nmacOS will ask the next time you click."));
        fixture.click();
        QVERIFY(!fixture.stage.isOpen());
        fixture.click();
        QCOMPARE(fixture.platform.files.listings.size(), 1);
        fixture.answer({"a"});
        QCOMPARE(fixture.button->stack()->message(), QString());
        QCOMPARE(fixture.rows(), QStringLiteral("a"));
    }

    void aFailureForgetsNothing()
    {
        Fixture fixture;
        fixture.click();
        fixture.answer({"a"});
        fixture.click();
        fixture.click();
        QVERIFY(fixture.platform.files.answer(std::nullopt));
        QVERIFY(!fixture.button->stack()->message().isEmpty());
        QCOMPARE(fixture.button->state().files, std::optional(QList{download(QStringLiteral("a"))}));
    }

    void untilTheFolderIsReadAnewTheOldFilesAreShown()
    {
        Fixture fixture;
        fixture.click();
        fixture.answer({"a"});
        fixture.click();
        fixture.click();
        QCOMPARE(fixture.rows(), QStringLiteral("a"));
        fixture.answer({"b", "a"});
        QCOMPARE(fixture.rows(), QStringLiteral("b a"));
    }

    void anAnswerToAnOlderClickIsDropped()
    {
        Fixture fixture;
        fixture.click();
        fixture.click();
        fixture.click();
        fixture.answer({"old"});
        QVERIFY(fixture.button->stack()->rows().isEmpty());
        fixture.answer({"new"});
        QCOMPARE(fixture.rows(), QStringLiteral("new"));
    }

    void clicksUnderAReadingAreAnsweredByOneMore()
    {
        Fixture fixture;
        for (int i = 0; i < 9; ++i)
            fixture.click();
        QCOMPARE(fixture.platform.files.listings.size(), 1);
        fixture.answer({"old"});
        QCOMPARE(fixture.platform.files.listings.size(), 1);
        fixture.answer({"new"});
        QVERIFY(fixture.platform.files.listings.isEmpty());
        QCOMPARE(fixture.rows(), QStringLiteral("new"));
    }

    void aFolderThatIsTheOneAgainIsReadToItsEnd()
    {
        Fixture fixture;
        const QString first = fixture.platform.directories.downloadsPath;
        fixture.click();
        fixture.click();
        fixture.platform.directories.downloadsPath = QStringLiteral("/home/me/Elsewhere");
        fixture.click();
        fixture.click();
        fixture.platform.directories.downloadsPath = first;
        fixture.click();
        QCOMPARE(fixture.platform.files.listings.size(), 3);
        fixture.answer({"old"});
        fixture.answer({"elsewhere"});
        QCOMPARE(fixture.platform.files.listings.size(), 1);
        fixture.answer({"new"});
        QVERIFY(fixture.platform.files.listings.isEmpty());
        QCOMPARE(fixture.rows(), QStringLiteral("new"));
    }

    void anotherFolderIsReadWhileTheOneBeforeIsStuck()
    {
        Fixture fixture;
        fixture.click();
        fixture.click();
        fixture.platform.directories.downloadsPath = QStringLiteral("/home/me/Elsewhere");
        fixture.click();
        QCOMPARE(fixture.platform.files.listings.size(), 2);
        std::swap(fixture.platform.files.listings[0], fixture.platform.files.listings[1]);
        fixture.answer({"new"});
        QCOMPARE(
            fixture.button->state().files, std::optional(QList{QUrl(QStringLiteral("file:///home/me/Elsewhere/new"))}));
        fixture.answer({"old"});
        QVERIFY(fixture.platform.files.listings.isEmpty());
        QCOMPARE(fixture.rows(), QStringLiteral("new"));
    }

    void theTwelveNewestAreListed()
    {
        Fixture fixture;
        fixture.click();
        fixture.answer({"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13"});
        QCOMPARE(fixture.button->stack()->rows().size(), 12);
    }

    void aFileThatIsClickedIsOpenedAndTheStackCloses()
    {
        Fixture fixture;
        fixture.click();
        fixture.answer({"a", "b"});
        fixture.button->stack()->rows().at(1)->click();
        QCOMPARE(fixture.platform.workspace.openedFiles, QList{download(QStringLiteral("b"))});
        QVERIFY(!fixture.stage.isOpen());
    }

    void theFolderIsOpenedFromTheStack()
    {
        Fixture fixture;
        fixture.click();
        fixture.button->stack()->folderButton().click();
        QCOMPARE(fixture.platform.workspace.openedFiles, QList{fixture.folder});
        QVERIFY(!fixture.stage.isOpen());
    }

    void aRowHasAMenuInThePlaceOfTheStack()
    {
        Fixture fixture;
        fixture.platform.popupWindows.hasSystemMenus = true;
        fixture.click();
        fixture.answer({"a"});
        Q_EMIT fixture.button->stack()->rows().first()->menuRequested();
        const Menu menu = fixture.platform.popupWindows.systemMenu.value().menu;
        QCOMPARE(titles(menu), (QStringList{QStringLiteral("Open"), QStringLiteral("Show in Finder")}));
        QVERIFY(choose(menu, QStringLiteral("Open")));
        QCOMPARE(fixture.platform.workspace.openedFiles, QList{download(QStringLiteral("a"))});
        QVERIFY(choose(menu, QStringLiteral("Show in Finder")));
        QCOMPARE(fixture.platform.workspace.revealed, (QList<QList<QUrl>>{{download(QStringLiteral("a"))}}));
        QVERIFY(!fixture.open());
    }

    void theMenuOpensShowsAndHidesTheFolder()
    {
        Fixture fixture;
        const Menu menu = fixture.button->menu();
        QCOMPARE(titles(menu),
            (QStringList{QStringLiteral("Open Downloads Folder"), QStringLiteral("Show in Finder"), QStringLiteral("-"),
                QStringLiteral("Hide Downloads from Dock")}));
        QVERIFY(choose(menu, QStringLiteral("Open Downloads Folder")));
        QCOMPARE(fixture.platform.workspace.openedFiles, QList{fixture.folder});
        QVERIFY(choose(menu, QStringLiteral("Show in Finder")));
        QCOMPARE(fixture.platform.workspace.revealed, (QList<QList<QUrl>>{{fixture.folder}}));
        QVERIFY(choose(menu, QStringLiteral("Hide Downloads from Dock")));
        QVERIFY(!fixture.store.settings().showDownloadsFolder);
    }

    void anAnswerAfterItsEndReachesNobody()
    {
        Fixture fixture;
        fixture.click();
        delete fixture.button;
        QVERIFY(!fixture.stage.isOpen());
        fixture.answer({"a"});
    }

    void whileItIsOpenTheBarIsHeldAndEscapeClosesIt()
    {
        Fixture fixture;
        fixture.click();
        QVERIFY(fixture.holds.isHeld());
        QCOMPARE(fixture.platform.popupWindows.keyboardOwner.data(), fixture.open());
        QTest::keyClick(fixture.open(), Qt::Key_Escape);
        QVERIFY(!fixture.stage.isOpen());
        QVERIFY(!fixture.holds.isHeld());
    }

    void aPressElsewhereClosesIt()
    {
        Fixture fixture;
        fixture.click();
        fixture.platform.popupWindows.press({10, 800});
        QVERIFY(!fixture.stage.isOpen());
    }
};

MOORLINE_TEST(DownloadsButtonTest);
#include "DownloadsButtonTest.moc"

#include "files/PinnedItemsWidget.h"

#include "FilesFixture.h"
#include "files/DownloadsButton.h"
#include "files/PinnedItemButton.h"
#include "files/TrashButton.h"
#include "harness/TestCase.h"

#include <QPointer>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture : FilesFixture {
    Fixture()
    {
        row->setPos(20, 20);
        row->setStage(&stage);
        hand.scene.addItem(row);
    }

    [[nodiscard]] QString names() const
    {
        QStringList shown;
        for (const PinnedItemButton *button : row->buttons())
            shown.append(button->item().name);
        return shown.join(u' ');
    }
    [[nodiscard]] QColor at(int x, int y) { return painted(hand.scene).pixelColor(x, y); }

    PinnedItemsWidget *row = new PinnedItemsWidget(context());
};

constexpr QPoint first(40, 40);

} // namespace

class PinnedItemsWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void withNothingToShowItTakesNoPlace()
    {
        const Fixture fixture;
        QVERIFY(fixture.row->buttons().isEmpty());
        QCOMPARE(fixture.row->preferredSize(), QSizeF(0, 0));
    }

    void itemsStandInTheirOrderSixPointsApart()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")});
        QCOMPARE(fixture.names(), QStringLiteral("b a c"));
        for (qsizetype i = 0; i < 3; ++i)
            QCOMPARE(fixture.row->buttons()[i]->geometry(), QRectF(52 * qreal(i), 0, 46, 52));
        QCOMPARE(fixture.row->preferredSize(), QSizeF(150, 52));
    }

    void downloadsAndTrashStandBehindThem()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        fixture.store.change([](Settings &settings) {
            settings.showDownloadsFolder = true;
            settings.showTrash = true;
        });
        QCOMPARE(fixture.row->downloads()->geometry(), QRectF(52, 0, 46, 52));
        QCOMPARE(fixture.row->trash()->geometry(), QRectF(104, 0, 46, 52));
        QCOMPARE(fixture.row->preferredSize(), QSizeF(150, 52));
        fixture.row->setIconSize(24);
        QCOMPARE(fixture.row->trash()->geometry(), QRectF(60, 0, 24, 30));
        QCOMPARE(fixture.row->preferredSize(), QSizeF(84, 30));
    }

    void withNothingPinnedTheRowHoldsJustThoseTwo()
    {
        Fixture fixture;
        fixture.store.change([](Settings &settings) {
            settings.showDownloadsFolder = true;
            settings.showTrash = true;
        });
        QVERIFY(fixture.row->buttons().isEmpty());
        QCOMPARE(fixture.row->downloads()->x(), 0.0);
        QCOMPARE(fixture.row->trash()->x(), 52.0);
        QCOMPARE(fixture.row->preferredSize(), QSizeF(98, 52));
    }

    void oneThatIsNotWantedGoesAndTheOtherStays()
    {
        Fixture fixture;
        fixture.store.change([](Settings &settings) {
            settings.showDownloadsFolder = true;
            settings.showTrash = true;
        });
        const QPointer<DownloadsButton> downloads = fixture.row->downloads();
        const TrashButton *trash = fixture.row->trash();
        fixture.store.change([](Settings &settings) { settings.showDownloadsFolder = false; });
        QCOMPARE(fixture.row->downloads(), nullptr);
        QCOMPARE(fixture.row->trash(), trash);
        QCOMPARE(trash->x(), 0.0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!downloads);
    }

    void itemsStayTheSameWhereverTheyMove()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a"), QStringLiteral("b")});
        const auto before = fixture.row->buttons();
        fixture.pin({QStringLiteral("b"), QStringLiteral("a")});
        QCOMPARE(fixture.row->buttons(), (QList{before[1], before[0]}));
    }

    void otherSettingsChangeNothing()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        QSignalSpy sizes(fixture.row, &BarWidget::naturalSizeChanged);
        fixture.store.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
        QCOMPARE(sizes.size(), 0);
    }

    void anItemHasTheIconOfItsFileAndItsName()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        const PinnedItemButton *button = fixture.row->buttons().first();
        QCOMPARE(button->helpText(), QStringLiteral("a"));
        QCOMPARE(button->description().name, QStringLiteral("a"));
        QCOMPARE(button->description().role, QAccessible::Button);
        static_cast<void>(painted(fixture.hand.scene));
        const IconRequest wanted{
            .kind = IconKind::file, .subject = QStringLiteral("/home/me/a"), .size = 46, .scale = 1};
        QCOMPARE(fixture.platform.icons.requested, QList{wanted});
    }

    void aClickOpensTheFile()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("100% #1")});
        fixture.hand.click(first);
        QCOMPARE(fixture.platform.workspace.openedFiles, QList{FilesFixture::file(QStringLiteral("100% #1"))});
    }

    void theMenuOpensShowsAndRemoves()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a"), QStringLiteral("b")});
        const Menu menu = fixture.row->buttons().first()->menu();
        QCOMPARE(titles(menu),
            (QStringList{QStringLiteral("Open"), QStringLiteral("Show in Finder"), QStringLiteral("-"),
                QStringLiteral("Remove from Dock")}));
        QVERIFY(choose(menu, QStringLiteral("Open")));
        QCOMPARE(fixture.platform.workspace.openedFiles, QList{FilesFixture::file(QStringLiteral("a"))});
        QVERIFY(choose(menu, QStringLiteral("Show in Finder")));
        QCOMPARE(fixture.platform.workspace.revealed, (QList<QList<QUrl>>{{FilesFixture::file(QStringLiteral("a"))}}));
        QVERIFY(choose(menu, QStringLiteral("Remove from Dock")));
        QCOMPARE(fixture.pinned(), QStringLiteral("b"));
    }

    void aRequestForTheMenuOpensIt()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        QVERIFY(fixture.hand.askForMenu(first));
        QVERIFY(fixture.stage.isOpenAt(*fixture.row->buttons().first()));
    }

    void filesDroppedOnAnItemArePinned()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        QMimeData data;
        FilesFixture::offer(data, {QStringLiteral("b c"), QStringLiteral("d")});
        QCOMPARE(fixture.hand.dragOver(first, data, Qt::CopyAction), Qt::CopyAction);
        QCOMPARE(fixture.hand.letGo(first, data, Qt::CopyAction), Qt::CopyAction);
        QCOMPARE(fixture.pinned(), QStringLiteral("a b c d"));
        QVERIFY(fixture.platform.workspace.openedFiles.isEmpty());
    }

    void aFileThatIsPinnedIsNotPinnedAgain()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a"), QStringLiteral("b")});
        QSignalSpy changes(&fixture.store, &SettingsStore::settingsDidChange);
        QMimeData data;
        data.setUrls({FilesFixture::file(QStringLiteral("b")), FilesFixture::file(QStringLiteral("a/"))});
        static_cast<void>(fixture.hand.dragOver(first, data, Qt::CopyAction));
        static_cast<void>(fixture.hand.letGo(first, data, Qt::CopyAction));
        QCOMPARE(fixture.pinned(), QStringLiteral("a b"));
        QCOMPARE(changes.size(), 0);
    }

    void whatIsNoFileIsNotPinned()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        QMimeData data;
        data.setUrls({QUrl(QStringLiteral("https://example.org/x"))});
        static_cast<void>(fixture.hand.dragOver(first, data, Qt::CopyAction));
        QCOMPARE(fixture.hand.letGo(first, data, Qt::CopyAction), Qt::IgnoreAction);
        QMimeData text;
        text.setText(QStringLiteral("/home/me/b"));
        QCOMPARE(fixture.hand.dragOver(first, text, Qt::CopyAction), Qt::IgnoreAction);
        QCOMPARE(fixture.pinned(), QStringLiteral("a"));
    }

    void underADropThereIsALightField()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        // 3 points to the left of the icon, in the middle of its height.
        QCOMPARE(fixture.at(17, 43), QColor(Qt::black));
        QMimeData data;
        FilesFixture::offer(data, {QStringLiteral("b")});
        static_cast<void>(fixture.hand.dragOver(first, data, Qt::CopyAction));
        QCOMPARE(fixture.at(17, 43), QColor(56, 56, 56));
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.row->buttons().first()->iconScale(), 1.16);
        // Grown with the icon: 54 points become 62.64.
        QCOMPARE(fixture.at(12, 43), QColor(56, 56, 56));
        QCOMPARE(fixture.at(10, 43), QColor(Qt::black));
        fixture.hand.dragAway();
        QCOMPARE(fixture.at(17, 43), QColor(Qt::black));
    }

    void whatHasNoIconIsShownBySymbols()
    {
        Fixture fixture;
        fixture.pin({QStringLiteral("a")});
        fixture.store.change([](Settings &settings) { settings.showDownloadsFolder = true; });
        static_cast<void>(painted(fixture.hand.scene));
        QVERIFY(fixture.platform.icons.miss() && fixture.platform.icons.miss());
        static_cast<void>(painted(fixture.hand.scene));
        QStringList names;
        for (const SymbolRequest &request : std::as_const(fixture.platform.symbolCatalogue.requests))
            names.append(request.name);
        names.removeDuplicates();
        names.sort();
        QCOMPARE(names, (QStringList{QStringLiteral("doc"), QStringLiteral("folder")}));
    }

    void theRowIsAGroup()
    {
        const Fixture fixture;
        QCOMPARE(fixture.row->description().role, QAccessible::Grouping);
        QCOMPARE(fixture.row->description().name, QStringLiteral("Files & Folders"));
    }
};

MOORLINE_TEST(PinnedItemsWidgetTest);
#include "PinnedItemsWidgetTest.moc"

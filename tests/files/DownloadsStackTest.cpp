#include "files/DownloadsStackView.h"

#include "FilesFixture.h"
#include "files/DownloadsRow.h"
#include "harness/TestCase.h"

#include <QAbstractScrollArea>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// The list in a window of its own, as above the bar.
struct Fixture : FilesFixture {
    explicit Fixture(const DownloadsState &state = {})
        : popover(platform.popupWindows,
            std::make_unique<DownloadsStackView>(
                DownloadsStackView::Context{
                    .stage = stage, .files = platform.files, .icons = icons, .symbols = symbols},
                state))
    {
    }
    explicit Fixture(int files)
        : Fixture(DownloadsState{.files = filesOf(files)})
    {
    }

    static QList<QUrl> filesOf(int count)
    {
        QList<QUrl> files;
        for (int i = 0; i < count; ++i)
            files.append(file(QString::number(i)));
        return files;
    }
    void showIt()
    {
        popover.setFrame({QPointF(0, 0), popover.naturalSize()});
        popover.orderFront();
        view.setFocus();
    }
    [[nodiscard]] qsizetype focused() const
    {
        return view.rows().indexOf(qobject_cast<DownloadsRow *>(popover.focusWidget()));
    }
    void press(Qt::Key key) { QTest::keyClick(popover.focusWidget(), key); }

    Popover popover;
    DownloadsStackView &view = static_cast<DownloadsStackView &>(popover.content());
};

/// Whether a screen reader finds these words in the list.
bool saysAloud(QWidget &list, const QString &words)
{
    const auto widgets = list.findChildren<QWidget *>();
    return std::any_of(widgets.begin(), widgets.end(), [&words](QWidget *widget) {
        return !widget->isHidden() && QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name) == words;
    });
}

/// What a row paints where it has neither icon nor text.
QColor emptyPlaceOf(DownloadsRow &row)
{
    QImage image(row.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    row.render(&image, {}, {}, QWidget::RenderFlags());
    return image.pixelColor(row.width() - 3, row.height() / 2);
}

} // namespace

class DownloadsStackTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void rowsAreInTheOrderOfTheFiles()
    {
        const Fixture fixture(3);
        QCOMPARE(fixture.view.rows().size(), 3);
        QCOMPARE(fixture.view.rows().at(1)->url(), std::optional(FilesFixture::file(QStringLiteral("1"))));
        QCOMPARE(fixture.view.message(), QString());
    }

    void theListScrollsFromThreeHundredAndTwentyPointsOn()
    {
        Fixture few(2);
        few.showIt();
        const auto *list = few.view.findChild<QAbstractScrollArea *>();
        const int row = few.view.rows().first()->sizeHint().height();
        QCOMPARE(list->height(), 2 * row);
        Fixture many(12);
        many.showIt();
        list = many.view.findChild<QAbstractScrollArea *>();
        QVERIFY(12 * row > 320);
        QCOMPARE(list->height(), 320);
        QCOMPARE(many.view.rows().last()->width(), list->viewport()->width());
    }

    void aLongNameIsAsWideAsTheList()
    {
        Fixture fixture(DownloadsState{.files = QList{FilesFixture::file(QString(300, u'w'))}});
        fixture.showIt();
        const auto *list = fixture.view.findChild<QAbstractScrollArea *>();
        QCOMPARE(fixture.view.rows().first()->width(), list->viewport()->width());
    }

    void theArrowKeysGoThroughTheFilesAndToTheFolder()
    {
        Fixture fixture(2);
        fixture.showIt();
        fixture.press(Qt::Key_Down);
        QCOMPARE(fixture.focused(), 0);
        fixture.press(Qt::Key_Down);
        QCOMPARE(fixture.focused(), 1);
        fixture.press(Qt::Key_Down);
        QCOMPARE(fixture.popover.focusWidget(), &fixture.view.folderButton());
        fixture.press(Qt::Key_Down);
        QCOMPARE(fixture.focused(), 0);
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.popover.focusWidget(), &fixture.view.folderButton());
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.focused(), 1);
    }

    void theRowUnderThePointerIsLighter()
    {
        Fixture fixture(2);
        fixture.showIt();
        fixture.view.rows()[0]->setAttribute(Qt::WA_UnderMouse);
        // A tenth of white.
        QCOMPARE(emptyPlaceOf(*fixture.view.rows()[0]), QColor(255, 255, 255, 26));
        QCOMPARE(emptyPlaceOf(*fixture.view.rows()[1]), QColor(0, 0, 0, 0));
    }

    void returnOpensWhatTheKeysCameTo()
    {
        Fixture fixture(2);
        fixture.showIt();
        QSignalSpy chosen(&fixture.view, &DownloadsStackView::fileChosen);
        QSignalSpy folder(&fixture.view, &DownloadsStackView::folderChosen);
        fixture.press(Qt::Key_Return);
        QCOMPARE(chosen.size(), 0);
        fixture.press(Qt::Key_Down);
        fixture.press(Qt::Key_Return);
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.first().first().toUrl(), FilesFixture::file(QStringLiteral("0")));
        fixture.press(Qt::Key_Up);
        fixture.press(Qt::Key_Enter);
        QCOMPARE(folder.size(), 1);
    }

    void aRowTheKeysComeToIsInSight()
    {
        Fixture fixture(12);
        fixture.showIt();
        fixture.press(Qt::Key_Up);
        fixture.press(Qt::Key_Up);
        QCOMPARE(fixture.focused(), 11);
        const auto *list = fixture.view.findChild<QAbstractScrollArea *>();
        const DownloadsRow *last = fixture.view.rows().last();
        const QRect inSight(last->mapTo(list->viewport(), QPoint(0, 0)), last->size());
        QVERIFY(list->viewport()->rect().contains(inSight));
    }

    void aScreenReaderHearsTheNamesAndWhatIsSaidInTheirPlace()
    {
        const Fixture fixture(1);
        const auto *row = QAccessible::queryAccessibleInterface(fixture.view.rows().first());
        QCOMPARE(row->text(QAccessible::Name), QStringLiteral("0"));
        QCOMPARE(row->role(), QAccessible::Button);
        const auto *folder = QAccessible::queryAccessibleInterface(&fixture.view.folderButton());
        QCOMPARE(folder->text(QAccessible::Name), QStringLiteral("Open Downloads Folder"));
        QCOMPARE(folder->role(), QAccessible::Button);
        Fixture empty(0);
        const QString message = QStringLiteral("No recent downloads");
        QVERIFY(saysAloud(empty.view, message));
        empty.view.show({.couldNotRead = true});
        QVERIFY(!saysAloud(empty.view, message));
        QVERIFY(saysAloud(empty.view,
            QStringLiteral("Moorline needs permission to read Downloads.\nmacOS will ask the next time you click.")));
    }

    void theSymbolOfTheButtonIsAsLargeAsItsWords()
    {
        Fixture fixture;
        fixture.showIt();
        static_cast<void>(fixture.view.grab());
        const auto &requests = std::as_const(fixture.platform.symbolCatalogue.requests);
        const auto isFolder = [](const SymbolRequest &request) { return request.name == QStringLiteral("folder"); };
        const auto asked = std::find_if(requests.begin(), requests.end(), isFolder);
        QVERIFY(asked != requests.end());
        QCOMPARE(asked->pointSize, 11.0);
    }

    void itBecomesWhatIsShownLater()
    {
        Fixture fixture;
        fixture.showIt();
        const int empty = fixture.view.sizeHint().height();
        QSignalSpy chosen(&fixture.view, &DownloadsStackView::fileChosen);
        fixture.view.show({.files = Fixture::filesOf(2)});
        QCOMPARE(fixture.view.rows().size(), 2);
        QTRY_VERIFY(fixture.view.sizeHint().height() > empty);
        fixture.view.show({.files = QList<QUrl>()});
        QVERIFY(fixture.view.rows().isEmpty());
        QCOMPARE(fixture.view.message(), QStringLiteral("No recent downloads"));
    }

    void whatIsTheSameStaysAsItIs()
    {
        Fixture fixture(2);
        const auto rows = fixture.view.rows();
        fixture.view.show({.files = Fixture::filesOf(2)});
        QCOMPARE(fixture.view.rows(), rows);
    }
};

MOORLINE_TEST(DownloadsStackTest);
#include "DownloadsStackTest.moc"

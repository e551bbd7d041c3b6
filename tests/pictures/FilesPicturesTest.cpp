#include "PicturesFixture.h"
#include "ReferencePictures.h"
#include "chrome/BarPopup.h"
#include "files/DownloadsButton.h"
#include "files/PinnedItemsWidget.h"
#include "files/TrashButton.h"
#include "harness/TestCase.h"

#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>

namespace moorline::test {

namespace {

/// Two pinned files, the Downloads and the Trash, above which things open.
struct Files : PicturesFixture {
    Files()
    {
        change([](Settings &settings) {
            settings.pinnedItems = {{QStringLiteral("/Letters"), QStringLiteral("Letters")},
                {QStringLiteral("/notes.txt"), QStringLiteral("notes.txt")}};
        });
        widget = makeBarWidget(WidgetKind::pinnedItems, services);
        row = dynamic_cast<PinnedItemsWidget *>(widget.get());
        widget->setStage(&services.barStage);
        widget->resize(widget->preferredSize());
    }

    /// The stack, with what was answered.
    [[nodiscard]] QImage stack(const std::optional<QList<FolderEntry>> &found)
    {
        QGraphicsScene scene;
        scene.addItem(row);
        row->downloads()->press();
        const auto *popup = qobject_cast<BarPopup *>(shown());
        const int before = popup ? popup->height() : 0;
        if (!popup || !platform.files.answer(found))
            qFatal("there is no stack");
        // The window is as large as what came into it once the event loop turned.
        const auto isAsLarge = [&] {
            return popup->height() > before && popup->size() == popup->naturalSize().toSize();
        };
        if (!QTest::qWaitFor(isAsLarge))
            qFatal("the stack is not as large as its files");
        [[maybe_unused]] const QImage first = picture(*shown());
        answerIcons();
        const QImage image = picture(*shown());
        services.barStage.close();
        scene.removeItem(row);
        return image;
    }
    [[nodiscard]] static FolderEntry entry(const QByteArray &name, int seconds)
    {
        return {.name = name, .added = FolderEntry::Time(std::chrono::seconds(seconds))};
    }

    std::unique_ptr<BarWidget> widget;
    PinnedItemsWidget *row = nullptr;
};

} // namespace

/// The same as PicturesTest, of files.
class FilesPicturesTest final : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    }

private Q_SLOTS:
    void files()
    {
        Files fixture;
        QCOMPARE(compareWithReference(fixture.picture(*fixture.row), QStringLiteral("files")), QString());
    }

    void filesHeldOverTheTrash()
    {
        Files fixture;
        QGraphicsScene scene;
        scene.addItem(fixture.row);
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
        QGraphicsSceneDragDropEvent drag(QEvent::GraphicsSceneDragEnter);
        drag.setMimeData(&files);
        drag.setPossibleActions(Qt::CopyAction);
        scene.sendEvent(fixture.row->trash(), &drag);
        fixture.platform.clock.advance(std::chrono::seconds(1));
        scene.removeItem(fixture.row);
        QVERIFY(fixture.row->trash()->isDropHovered());
        QCOMPARE(compareWithReference(fixture.picture(*fixture.row), QStringLiteral("files-grown")), QString());
    }

    void filesOfASystemWithoutIcons()
    {
        Files fixture;
        fixture.hasIcons = false;
        // The Trash asks twice.
        [[maybe_unused]] const QImage first = fixture.picture(*fixture.row);
        QCOMPARE(compareWithReference(fixture.picture(*fixture.row), QStringLiteral("files-without-icons")), QString());
    }

    void downloads()
    {
        Files fixture;
        const QImage image = fixture.stack(QList{Files::entry("letter.pdf", 3),
            Files::entry("a name that is longer than the list is wide.tar.gz", 2), Files::entry("caf\xe9", 1)});
        QCOMPARE(compareWithReference(image, QStringLiteral("downloads")), QString());
    }

    void moreDownloadsThanThereIsRoomFor()
    {
        Files fixture;
        QList<FolderEntry> entries;
        for (int i = 0; i < 20; ++i)
            entries.append(Files::entry(QByteArray::number(i), i));
        QCOMPARE(compareWithReference(fixture.stack(entries), QStringLiteral("downloads-many")), QString());
    }

    void noDownloads()
    {
        Files fixture;
        const QImage image = fixture.stack(QList<FolderEntry>());
        QCOMPARE(compareWithReference(image, QStringLiteral("downloads-none")), QString());
    }

    void downloadsThatCannotBeRead()
    {
        Files fixture;
        const QImage image = fixture.stack(std::nullopt);
        QCOMPARE(compareWithReference(image, QStringLiteral("downloads-unreadable")), QString());
    }
};

MOORLINE_TEST(FilesPicturesTest);

} // namespace moorline::test

#include "FilesPicturesTest.moc"

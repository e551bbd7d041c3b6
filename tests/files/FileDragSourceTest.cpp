#include "files/FileDragSource.h"

#include "FilesFixture.h"
#include "harness/TestCase.h"

#include <QDrag>
#include <QMouseEvent>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

struct Fixture : FilesFixture {
    explicit Fixture(std::optional<QUrl> url = file(QStringLiteral("a b")))
        : source(stage, platform.files, icons, std::move(url))
    {
        source.resize(200, 30);
        source.show();
        QObject::connect(&source, &FileDragSource::dragStarted, &source, [this] {
            wasHeld = holds.isHeld();
            // No child of the source, which it may outlive.
            QVERIFY(source.findChildren<QDrag *>().isEmpty());
            const auto *drag = QCoreApplication::instance()->findChildren<QDrag *>().last();
            offered = drag->mimeData()->urls();
            formats = drag->mimeData()->formats();
            transfer = drag->mimeData()->data(QStringLiteral("application/x-transfer"));
            hotSpot = drag->hotSpot();
        });
    }

    void send(QEvent::Type type, const QPoint &place, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QMouseEvent event(type, place, source.mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&source, &event);
    }
    void press() { send(QEvent::MouseButtonPress, {50, 15}, Qt::LeftButton, Qt::LeftButton); }
    void move(const QPoint &place) { send(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton); }
    void release(const QPoint &place) { send(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton); }

    /// Draws nothing.
    class PlainSource : public FileDragSource {
    public:
        using FileDragSource::FileDragSource;

    protected:
        void paintEvent(QPaintEvent *) override { }
    };

    PlainSource source;
    QSignalSpy opened{&source, &QAbstractButton::clicked};
    QSignalSpy started{&source, &FileDragSource::dragStarted};
    QSignalSpy ended{&source, &FileDragSource::dragEnded};
    bool wasHeld = false;
    QList<QUrl> offered;
    QStringList formats;
    QByteArray transfer;
    QPoint hotSpot;
};

} // namespace

class FileDragSourceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPressThatHardlyMovesIsAClick_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<bool>("isDrag");
        QTest::newRow("not at all") << QPoint(50, 15) << false;
        QTest::newRow("3 points") << QPoint(53, 15) << false;
        QTest::newRow("2 and 2 points") << QPoint(52, 17) << false;
        QTest::newRow("4 points") << QPoint(54, 15) << true;
        QTest::newRow("3 and 1 points") << QPoint(53, 16) << true;
        QTest::newRow("back") << QPoint(46, 15) << true;
    }

    void aPressThatHardlyMovesIsAClick()
    {
        QFETCH(QPoint, place);
        QFETCH(bool, isDrag);
        Fixture fixture;
        fixture.press();
        fixture.move(place);
        fixture.release(place);
        QCOMPARE(fixture.started.size(), isDrag ? 1 : 0);
        QCOMPARE(fixture.ended.size(), isDrag ? 1 : 0);
        QCOMPARE(fixture.opened.size(), isDrag ? 0 : 1);
    }

    void theFileIsOfferedAsItIs()
    {
        Fixture fixture(QUrl::fromEncoded("file:///home/me/a%FFb"));
        fixture.press();
        fixture.move({60, 15});
        QCOMPARE(fixture.offered.value(0).toEncoded(), "file:///home/me/a%FFb");
        QCOMPARE(fixture.formats, QStringList{QStringLiteral("text/uri-list")});
        QCOMPARE(fixture.hotSpot, QPoint(24, 24));
    }

    void whatIsPreparedAtThePressGoesWithTheDrag()
    {
        Fixture fixture;
        fixture.platform.files.offered.insert(QStringLiteral("application/x-transfer"), "key");
        fixture.press();
        QCOMPARE(fixture.platform.files.prepared, QList{fixture.file(QStringLiteral("a b"))});
        fixture.move({60, 15});
        QCOMPARE(fixture.formats.size(), 2);
        QCOMPARE(fixture.transfer, "key");
        QCOMPARE(fixture.offered.size(), 1);
        // With what is carried, for which others may still ask.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(*fixture.platform.files.offers, 0);
    }

    void aClickTakesBackWhatWasPrepared()
    {
        Fixture fixture;
        fixture.press();
        QCOMPARE(*fixture.platform.files.offers, 1);
        fixture.release({50, 15});
        QCOMPARE(*fixture.platform.files.offers, 0);
    }

    void whileItIsDraggedTheBarIsHeld()
    {
        Fixture fixture;
        fixture.press();
        fixture.move({60, 15});
        QVERIFY(fixture.wasHeld);
        QVERIFY(!fixture.holds.isHeld());
        QVERIFY(!fixture.source.isDragging());
    }

    void itTellsOfThePointerThatComesAndGoes()
    {
        Fixture fixture;
        QSignalSpy hovered(&fixture.source, &FileDragSource::hoveredChanged);
        QEnterEvent enter({50, 15}, {50, 15}, {50, 15});
        QCoreApplication::sendEvent(&fixture.source, &enter);
        QCOMPARE(hovered, (QList<QVariantList>{{true}}));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&fixture.source, &leave);
        QCOMPARE(hovered, (QList<QVariantList>{{true}, {false}}));
    }

    /// As the list of the Downloads does when it is read anew.
    void aDragIsHeldWhenItsSourceGoes()
    {
        Fixture fixture;
        auto *source = new Fixture::PlainSource(
            fixture.stage, fixture.platform.files, fixture.icons, fixture.file(QStringLiteral("a")));
        source->resize(200, 30);
        bool isHeld = false;
        connect(source, &FileDragSource::dragStarted, &fixture.source, [&] {
            delete source;
            isHeld = fixture.holds.isHeld();
        });
        for (const int x : {50, 60}) {
            const auto type = x == 50 ? QEvent::MouseButtonPress : QEvent::MouseMove;
            QMouseEvent event(type, {qreal(x), 15}, {qreal(x), 15}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(source, &event);
        }
        QVERIFY(isHeld);
        QVERIFY(!fixture.holds.isHeld());
    }

    void oneDragFollowsFromAPress()
    {
        Fixture fixture;
        fixture.press();
        fixture.move({60, 15});
        fixture.move({90, 15});
        QCOMPARE(fixture.started.size(), 1);
    }

    void withoutAFileNothingIsDraggedAndThereIsNoMenu()
    {
        Fixture fixture(std::nullopt);
        QSignalSpy menus(&fixture.source, &FileDragSource::menuRequested);
        fixture.press();
        fixture.move({90, 15});
        fixture.release({90, 15});
        QCOMPARE(fixture.started.size(), 0);
        QCOMPARE(fixture.opened.size(), 1);
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 15}, fixture.source.mapToGlobal(QPoint(50, 15)));
        QCoreApplication::sendEvent(&fixture.source, &event);
        QCOMPARE(menus.size(), 0);
    }

    void aRightClickAsksForAMenuAndOpensNothing()
    {
        Fixture fixture;
        QSignalSpy menus(&fixture.source, &FileDragSource::menuRequested);
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 15}, fixture.source.mapToGlobal(QPoint(50, 15)));
        QCoreApplication::sendEvent(&fixture.source, &event);
        QCOMPARE(menus.size(), 1);
        fixture.send(QEvent::MouseButtonPress, {50, 15}, Qt::RightButton, Qt::RightButton);
        fixture.send(QEvent::MouseButtonRelease, {50, 15}, Qt::RightButton, Qt::NoButton);
        QCOMPARE(fixture.opened.size(), 0);
    }

    void thePictureIsTheIconOfTheFile()
    {
        Fixture fixture;
        fixture.press();
        const IconRequest wanted{
            .kind = IconKind::file, .subject = QStringLiteral("/home/me/a b"), .size = 48, .scale = 1};
        QCOMPARE(fixture.platform.icons.requested, QList{wanted});
        fixture.release({50, 15});
    }
};

MOORLINE_TEST(FileDragSourceTest);
#include "FileDragSourceTest.moc"

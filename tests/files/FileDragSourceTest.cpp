#include "files/FileDragSource.h"

#include "FilesFixture.h"
#include "harness/TestCase.h"

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
    }

    void send(QEvent::Type type, const QPoint &place, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QMouseEvent event(type, place, source.mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&source, &event);
    }
    void press() { send(QEvent::MouseButtonPress, {50, 15}, Qt::LeftButton, Qt::LeftButton); }
    void move(const QPoint &place) { send(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton); }
    [[nodiscard]] auto &carrying() { return platform.popupWindows.carrying; }
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
        QCOMPARE(fixture.carrying().has_value(), isDrag);
        if (isDrag)
            fixture.platform.popupWindows.letFileGo();
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
        const auto &carrying = fixture.carrying().value();
        QCOMPARE(carrying.file.url.toEncoded(), "file:///home/me/a%FFb");
        QCOMPARE(carrying.source.data(), &fixture.source);
        QCOMPARE(carrying.press, QPointF(50, 15));
    }

    void whatIsPreparedAtThePressGoesWithTheDrag()
    {
        Fixture fixture;
        fixture.platform.files.offered.insert(QStringLiteral("application/x-transfer"), "key");
        fixture.press();
        QCOMPARE(fixture.platform.files.prepared, QList{fixture.file(QStringLiteral("a b"))});
        fixture.move({60, 15});
        const auto formats = fixture.carrying().value().file.offer->formats();
        QCOMPARE(formats, (QHash<QString, QByteArray>{{QStringLiteral("application/x-transfer"), "key"}}));
        QCOMPARE(*fixture.platform.files.offers, 1);
        // It goes with what is carried.
        fixture.platform.popupWindows.letFileGo();
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
        QVERIFY(fixture.holds.isHeld());
        QVERIFY(fixture.source.isDragging());
        bool wasHeld = true;
        connect(&fixture.source, &FileDragSource::dragEnded, &fixture.source,
            [&] { wasHeld = fixture.holds.isHeld() || fixture.source.isDragging(); });
        fixture.platform.popupWindows.letFileGo();
        QVERIFY(!wasHeld);
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
        for (const int x : {50, 60}) {
            const auto type = x == 50 ? QEvent::MouseButtonPress : QEvent::MouseMove;
            QMouseEvent event(type, {qreal(x), 15}, {qreal(x), 15}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(source, &event);
        }
        delete source;
        QVERIFY(fixture.holds.isHeld());
        fixture.platform.popupWindows.letFileGo();
        QVERIFY(!fixture.holds.isHeld());
    }

    void aSourceThatGoesAsItsDragBeginsCarriesNothing()
    {
        Fixture fixture;
        auto *source = new Fixture::PlainSource(
            fixture.stage, fixture.platform.files, fixture.icons, fixture.file(QStringLiteral("a")));
        source->resize(200, 30);
        connect(source, &FileDragSource::dragStarted, &fixture.source, [&] { delete source; });
        for (const int x : {50, 60}) {
            const auto type = x == 50 ? QEvent::MouseButtonPress : QEvent::MouseMove;
            QMouseEvent event(type, {qreal(x), 15}, {qreal(x), 15}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(source, &event);
        }
        QVERIFY(!fixture.carrying());
        QVERIFY(!fixture.holds.isHeld());
    }

    void aDragWithoutAnIconYetHasNoPicture()
    {
        Fixture fixture;
        fixture.press();
        fixture.move({60, 15});
        QVERIFY(fixture.carrying().value().file.picture.isNull());
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

    void thePictureGoesWithThePointer()
    {
        Fixture fixture;
        QImage icon(48, 48, QImage::Format_ARGB32_Premultiplied);
        icon.fill(Qt::red);
        fixture.press();
        fixture.platform.icons.answer(icon);
        fixture.move({60, 15});
        QCOMPARE(fixture.carrying().value().file.picture, icon);
    }
};

MOORLINE_TEST(FileDragSourceTest);
#include "FileDragSourceTest.moc"

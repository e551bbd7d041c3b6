#include "WidgetFixture.h"
#include "harness/TestCase.h"
#include "theme/Theme.h"

#include <QGraphicsSceneHoverEvent>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

using Emphasis = TransportButton::Emphasis;

const QUrl file(QStringLiteral("file:///tmp/a.png"));

void hover(BarItem &item, QEvent::Type type)
{
    QGraphicsScene scene;
    scene.addItem(&item);
    QGraphicsSceneHoverEvent event(type);
    scene.sendEvent(&item, &event);
    scene.removeItem(&item);
}

/// What the disc of the button is painted with, beside its symbol.
int discAlpha(TransportButton &button)
{
    return painted(button).pixelColor(3, 11).alpha();
}

ArtworkView::Shown shown(const QString &track, const std::optional<QUrl> &url, bool isPlaying = true)
{
    return {.trackId = track, .url = url, .isPlaying = isPlaying, .hasPlayer = true};
}

const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");

} // namespace

/// The button of the player, and the artwork.
class MusicPartsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aButtonIsAsLargeAsItsEmphasis()
    {
        QCOMPARE(TransportButton::sizeFor(Emphasis::plain), QSizeF(18, 22));
        QCOMPARE(TransportButton::sizeFor(Emphasis::emphasized), QSizeF(22, 22));
    }

    void anEmphasizedButtonHasADisc()
    {
        WidgetFixture fixture;
        TransportButton button(fixture.symbols, 4, Emphasis::emphasized, nullptr);
        button.show(QStringLiteral("play.fill"), QStringLiteral("Play"));
        button.setUsable(true);
        QCOMPARE(discAlpha(button), qRound(0.14 * 255));
        hover(button, QEvent::GraphicsSceneHoverEnter);
        QVERIFY(button.isHovered());
        QCOMPARE(discAlpha(button), qRound(0.22 * 255));
        hover(button, QEvent::GraphicsSceneHoverLeave);
        QCOMPARE(discAlpha(button), qRound(0.14 * 255));
        QCOMPARE(painted(button).pixelColor(0, 0).alpha(), 0);
    }

    void aPlainButtonHasNone()
    {
        WidgetFixture fixture;
        TransportButton button(fixture.symbols, 4, Emphasis::plain, nullptr);
        button.show(QStringLiteral("forward.end.fill"), QStringLiteral("Next"));
        button.setUsable(true);
        hover(button, QEvent::GraphicsSceneHoverEnter);
        QCOMPARE(discAlpha(button), 0);
    }

    void itsSymbolIsFullUnderThePointer()
    {
        WidgetFixture fixture;
        TransportButton button(fixture.symbols, 11, Emphasis::plain, nullptr);
        button.show(QStringLiteral("forward.end.fill"), QStringLiteral("Next"));
        button.setUsable(true);
        QVERIFY(!painted(button).isNull());
        QColor faint = Theme::primaryText;
        faint.setAlphaF(0.8F);
        QCOMPARE(fixture.lastRequest(QStringLiteral("forward.end.fill")).color, faint);
        hover(button, QEvent::GraphicsSceneHoverEnter);
        QVERIFY(!painted(button).isNull());
        QCOMPARE(fixture.lastRequest(QStringLiteral("forward.end.fill")).color, Theme::primaryText);
        // What cannot be pressed any more is not under it.
        button.setUsable(false);
        QVERIFY(!button.isHovered());
        QCOMPARE(button.opacity(), 0.35);
    }

    void itsWholeFrameTakesTheClick()
    {
        WidgetFixture fixture;
        const TransportButton button(fixture.symbols, 11, Emphasis::plain, nullptr);
        QVERIFY(button.shape().contains(QRectF(0.5, 0.5, 17, 21)));
        QCOMPARE(button.shape().boundingRect(), QRectF(0, 0, 18, 22));
    }

    void artworkIsASymbolUntilItIsThere()
    {
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        view.show(shown(one, file));
        QCOMPARE(view.size(), QSizeF(46, 46));
        const QImage image = painted(view);
        QCOMPARE(image.pixelColor(5, 23).alpha(), qRound(0.08 * 255));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(fixture.lastRequest(QStringLiteral("waveform")).pointSize, 16.0);
        QCOMPARE(fixture.lastRequest(QStringLiteral("waveform")).color, Theme::tertiaryText);
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::red)));
        QCOMPARE(painted(view).pixelColor(5, 23), QColor(Qt::red));
    }

    void itsSymbolTellsWhetherItPlays()
    {
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        RepaintCounter counter(view);
        view.show(shown(one, std::nullopt, false));
        QVERIFY(counter.takeRepaints() > 0);
        QVERIFY(!painted(view).isNull());
        QCOMPARE(fixture.platform.symbolCatalogue.requests.last().name, QStringLiteral("music.note"));
        view.show(shown(one, std::nullopt));
        QCOMPARE(counter.takeRepaints(), 1);
        QVERIFY(!painted(view).isNull());
        QCOMPARE(fixture.platform.symbolCatalogue.requests.last().name, QStringLiteral("waveform"));
        view.show(shown(one, std::nullopt));
        QCOMPARE(counter.takeRepaints(), 0);
    }

    void artworkThatIsNoPictureStaysASymbol()
    {
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        view.show(shown(one, file));
        QVERIFY(fixture.platform.pictures.miss());
        QVERIFY(view.picture().isNull());
        QCOMPARE(painted(view).pixelColor(5, 23).alpha(), qRound(0.08 * 255));
        // It is looked for again.
        fixture.platform.clock.advance(2s);
        QCOMPARE(fixture.platform.pictures.requested.size(), 2);
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::red)));
        QVERIFY(!view.picture().isNull());
    }

    void artworkStaysThoughItIsForgotten()
    {
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        view.show(shown(one, file));
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::red)));
        for (int i = 0; i < 200; ++i) {
            QVERIFY(fixture.covers.picture(QString::number(i), file).isNull());
            QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::blue)));
        }
        const qsizetype looks = fixture.platform.pictures.requested.size();
        view.show(shown(one, file, false));
        QCOMPARE(painted(view).pixelColor(5, 23), QColor(Qt::red));
        QCOMPARE(fixture.platform.pictures.requested.size(), looks);
    }

    void anotherTrackHasAnotherPicture()
    {
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        view.show(shown(one, file));
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::red)));
        view.show(shown(two, file));
        QVERIFY(view.picture().isNull());
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::blue)));
        QCOMPARE(painted(view).pixelColor(5, 23), QColor(Qt::blue));
        view.show(shown(two, std::nullopt));
        QVERIFY(view.picture().isNull());
        // What was seen before is known.
        view.show(shown(one, file));
        QCOMPARE(painted(view).pixelColor(5, 23), QColor(Qt::red));
        QCOMPARE(fixture.platform.pictures.requested.size(), 2);
    }

    void fillsItsSquareWithThePicture_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("1") << 1.0;
        QTest::newRow("2") << 2.0;
        QTest::newRow("1.5") << 1.5;
    }

    void fillsItsSquareWithThePicture()
    {
        QFETCH(const qreal, scale);
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        view.show(shown(one, file));
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::red)));
        const QImage image = painted(view, scale);
        const int last = image.width() - 1;
        QCOMPARE(image.pixelColor(0, last / 2), QColor(Qt::red));
        QCOMPARE(image.pixelColor(last, last / 2), QColor(Qt::red));
        QCOMPARE(image.pixelColor(last / 2, 0), QColor(Qt::red));
        QCOMPARE(image.pixelColor(last / 2, last), QColor(Qt::red));
        // A corner of radius ten leaves three points of the diagonal free.
        for (const QPoint corner : {QPoint(0, 0), QPoint(last, 0), QPoint(0, last), QPoint(last, last)})
            QCOMPARE(image.pixelColor(corner).alpha(), 0);
        const int inside = qRound(5 * scale);
        QCOMPARE(image.pixelColor(inside, inside), QColor(Qt::red));
        const int outside = qRound(1.4 * scale);
        QVERIFY(image.pixelColor(outside, outside).alpha() < 200);
    }

    void theEdgesOfThePillTakeTheClickToo()
    {
        WidgetFixture fixture;
        const ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        QCOMPARE(view.shape().boundingRect(), QRectF(0, -24, 46, 94));
    }

    void withoutAPlayerThereIsNothingToOpen()
    {
        WidgetFixture fixture;
        ArtworkView view(fixture.covers, fixture.symbols, nullptr);
        QVERIFY(!view.isTouchable());
        QCOMPARE(view.description().role, QAccessible::Graphic);
        QCOMPARE(view.description().name, QStringLiteral("Artwork"));
        view.show(shown(one, std::nullopt));
        QVERIFY(view.isTouchable());
        QCOMPARE(view.description().role, QAccessible::Button);
        QCOMPARE(view.description().name, QStringLiteral("Open Player"));
        view.show({});
        QVERIFY(!view.isTouchable());
        QCOMPARE(view.description().role, QAccessible::Graphic);
    }
};

MOORLINE_TEST(MusicPartsTest);
#include "MusicPartsTest.moc"

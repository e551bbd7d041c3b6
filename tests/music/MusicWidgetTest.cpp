#include "music/MusicWidget.h"

#include "PaintRecorder.h"
#include "TrialItem.h"
#include "WidgetFixture.h"
#include "harness/FontScope.h"
#include "harness/TestCase.h"
#include "theme/Text.h"
#include "theme/Theme.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

constexpr TextStyle titleStyle{.size = 13, .weight = QFont::Medium};
constexpr TextStyle artistStyle{.size = 11};

const PlayerReport one = MusicFixture::track(QStringLiteral("One"));

PlayerReport named(const QString &title, const QString &artist)
{
    PlayerReport report = one;
    report.title = title;
    report.artist = artist;
    return report;
}

qreal lineHeight(const TextStyle &style)
{
    return textSize(QStringLiteral("x"), style).height();
}

/// Height of both lines and the gap between them.
qreal textHeight()
{
    return lineHeight(titleStyle) + 3 + lineHeight(artistStyle);
}

QString title(MusicWidget &widget)
{
    return joined(PaintRecorder(widget).textsOfSize(13));
}

QString artist(MusicWidget &widget)
{
    return joined(PaintRecorder(widget).textsOfSize(11));
}

QList<QRectF> frames(const QList<TransportButton *> &buttons)
{
    QList<QRectF> frames;
    for (const TransportButton *button : buttons)
        frames.append(button->geometry());
    return frames;
}

} // namespace

class MusicWidgetTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void saysThatNothingPlays()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        const PaintRecorder painted(widget);
        QCOMPARE(joined(painted.texts), QStringLiteral("Nothing playing"));
        QVERIFY(areAll(painted.textsOfSize(13), QFont::Medium, Theme::tertiaryText));
        const Parts parts(widget);
        QVERIFY(parts.artwork->picture().isNull());
        QVERIFY(!parts.artwork->isTouchable());
        QVERIFY(!parts.progress->isVisible());
        for (const TransportButton *button : parts.buttons) {
            QVERIFY(button->isVisible() && !button->isTouchable());
            QCOMPARE(button->opacity(), 0.35);
        }
        QCOMPARE(parts.buttons[1]->symbol(), QStringLiteral("play.fill"));
        QVERIFY(!rendered(widget).isNull());
        const SymbolRequest note = fixture.lastRequest(QStringLiteral("music.note"));
        QCOMPARE(note.pointSize, 16.0);
        QCOMPARE(note.color, Theme::tertiaryText);
        QCOMPARE(widget.description().state, QStringLiteral("Nothing playing"));
    }

    void showsTitleAndArtist()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        const PaintRecorder painted(widget);
        QCOMPARE(joined(painted.textsOfSize(13)), QStringLiteral("One"));
        QCOMPARE(joined(painted.textsOfSize(11)), QStringLiteral("Artist"));
        QVERIFY(areAll(painted.textsOfSize(13), QFont::Medium, Theme::primaryText));
        QVERIFY(areAll(painted.textsOfSize(11), QFont::Normal, Theme::secondaryText));
        QCOMPARE(painted.textsOfSize(13).first().origin.x(), 56.0);
        QCOMPARE(painted.textsOfSize(11).first().origin.x(), 56.0);
        QCOMPARE(widget.description().role, QAccessible::Grouping);
        QCOMPARE(widget.description().name, QStringLiteral("Now Playing"));
        QCOMPARE(widget.description().state, QStringLiteral("One, Artist"));
    }

    void withoutAnArtistThereIsNoSuchLine()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(named(QStringLiteral("One"), {}));
        QCOMPARE(joined(PaintRecorder(widget).texts), QStringLiteral("One"));
        QCOMPARE(widget.description().state, QStringLiteral("One"));
    }

    void withoutATitleNothingPlaysBySomeone()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(named({}, QStringLiteral("Artist")));
        QCOMPARE(title(widget), QStringLiteral("Nothing playing"));
        QCOMPARE(artist(widget), QStringLiteral("Artist"));
        const Parts parts(widget);
        QVERIFY(!parts.buttons[1]->isTouchable() && !parts.progress->isVisible());
        QVERIFY(parts.artwork->isTouchable());
    }

    void thePlayerStandsInItsPlaces()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        const Parts parts(widget);
        const qreal row = std::max(22.0, textHeight());
        const qreal column = row + 5 + 3;
        const qreal height = std::max(46.0, std::ceil(column));
        const qreal top = (height - column) / 2;
        QCOMPARE(widget.size(), QSizeF(46 + 10 + 232, height));
        QCOMPARE(parts.artwork->geometry(), QRectF(0, std::round((height - 46) / 2), 46, 46));
        const qreal controls = std::round(top + (row - 22) / 2);
        QCOMPARE(frames(parts.buttons),
            (QList{QRectF(206, controls, 18, 22), QRectF(236, controls, 22, 22), QRectF(270, controls, 18, 22)}));
        QVERIFY(parts.progress->isVisible());
        QCOMPARE(parts.progress->geometry(), QRectF(56, std::round(top + row + 5), 232, 3));
    }

    void whileNothingPlaysTheControlsAreInTheMiddle()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        QCOMPARE(widget.size(), QSizeF(288, 46));
        QCOMPARE(Parts(widget).buttons.first()->geometry(), QRectF(206, 12, 18, 22));
    }

    void theCompactStyleHasNoControls()
    {
        WidgetFixture fixture;
        fixture.setStyle(MusicStyle::compact);
        MusicWidget widget(fixture.context());
        fixture.say(one);
        QCOMPARE(widget.size(), QSizeF(46 + 10 + 130, 46));
        const Parts parts(widget);
        QCOMPARE(barItems(widget), QList<BarItem *>{parts.artwork});
        QVERIFY(!parts.progress->isVisible());
        QCOMPARE(title(widget), QStringLiteral("One"));
        QCOMPARE(artist(widget), QStringLiteral("Artist"));
        const PaintRecorder painted(widget);
        const qreal top = (46 - textHeight()) / 2;
        const qreal lines = painted.textsOfSize(11).first().origin.y() - painted.textsOfSize(13).first().origin.y();
        QVERIFY(painted.textsOfSize(13).first().origin.y() > top);
        // From one base line to the other; that of the smaller letters is nearer to their top.
        const qreal nearer = lineHeight(titleStyle) + 3 - lines;
        QVERIFY2(nearer > 1 && nearer < 2.6, qPrintable(QString::number(nearer)));
    }

    void inTheCompactStyleOnlyTheArtworkReachesThePlayer()
    {
        WidgetFixture fixture;
        fixture.setStyle(MusicStyle::compact);
        MusicWidget widget(fixture.context());
        fixture.say(one);
        const Parts parts(widget);
        for (TransportButton *button : parts.buttons)
            button->press();
        QVERIFY(fixture.platform.mediaPlayers.sent.isEmpty());
        parts.artwork->press();
        QCOMPARE(fixture.platform.mediaPlayers.opened, QList{MusicSource::spotify});
    }

    void anotherStyleIsTakenAtOnce()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        int changes = 0;
        int moves = 0;
        connect(&widget, &BarWidget::naturalSizeChanged, this, [&changes] { ++changes; });
        connect(&widget, &BarWidget::itemsMoved, this, [&moves] { ++moves; });
        fixture.setStyle(MusicStyle::compact);
        QCOMPARE(widget.size().width(), 186.0);
        QCOMPARE(barItems(widget).size(), 1);
        fixture.setStyle(MusicStyle::player);
        QCOMPARE(widget.size().width(), 288.0);
        QCOMPARE(barItems(widget).size(), 4);
        QVERIFY(Parts(widget).progress->isVisible());
        QCOMPARE(changes, 2);
        QCOMPARE(moves, 2);
        // Another setting is of no interest.
        fixture.store.change([](Settings &settings) { settings.showSeconds = !settings.showSeconds; });
        QCOMPARE(moves, 2);
    }

    void longTextsAreCutAtTheirEnd_data()
    {
        QTest::addColumn<MusicStyle>("style");
        QTest::addColumn<qreal>("width");
        QTest::newRow("player") << MusicStyle::player << 122.0;
        QTest::newRow("compact") << MusicStyle::compact << 130.0;
    }

    void longTextsAreCutAtTheirEnd()
    {
        QFETCH(const MusicStyle, style);
        QFETCH(const qreal, width);
        WidgetFixture fixture;
        fixture.setStyle(style);
        MusicWidget widget(fixture.context());
        const QString longTitle = QStringLiteral("Symphony of a thousand very small and quiet instruments");
        fixture.say(named(longTitle, longTitle));
        QCOMPARE(title(widget), elided(longTitle, titleStyle, width));
        QCOMPARE(artist(widget), elided(longTitle, artistStyle, width));
        QVERIFY(title(widget).endsWith(u'\u2026'));
        const QString longest(1000000, u'W');
        fixture.say(named(longest, longest));
        QCOMPARE(title(widget), elided(QString(200, u'W'), titleStyle, width));
    }

    void linesStayLines()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(named(QStringLiteral(" One\n\tand two "), QStringLiteral("A\u2028B")));
        QCOMPARE(title(widget), QStringLiteral("One and two"));
        QCOMPARE(artist(widget), QStringLiteral("A B"));
    }

    void anotherFontCutsElsewhere()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        QGraphicsScene scene;
        scene.addItem(&widget);
        QCoreApplication::processEvents();
        const QString longTitle = QStringLiteral("Symphony of a thousand very small and quiet instruments");
        fixture.say(named(longTitle, {}));
        {
            const FontScope another;
            QCOMPARE(title(widget), elided(longTitle, titleStyle, 122));
        }
        QCOMPARE(title(widget), elided(longTitle, titleStyle, 122));
        scene.removeItem(&widget);
    }

    void buttonsTellThePlayer()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        const Parts parts(widget);
        for (TransportButton *button : parts.buttons) {
            QCOMPARE(button->opacity(), 1.0);
            button->press();
        }
        using Sent = QPair<MusicSource, MusicCommand>;
        constexpr auto spotify = MusicSource::spotify;
        QCOMPARE(fixture.platform.mediaPlayers.sent,
            (QList<Sent>{
                {spotify, MusicCommand::previous}, {spotify, MusicCommand::playPause}, {spotify, MusicCommand::next}}));
        QVERIFY(fixture.platform.mediaPlayers.opened.isEmpty());
    }

    void aPausedTrackKeepsEverythingButItsSymbol()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        PlayerReport report = one;
        report.artwork = QUrl(QStringLiteral("file:///tmp/a.png"));
        fixture.say(report);
        QVERIFY(fixture.platform.pictures.answer(FakePictures::plain(Qt::red)));
        const Parts parts(widget);
        QCOMPARE(parts.buttons[1]->symbol(), QStringLiteral("pause.fill"));
        QCOMPARE(parts.buttons[1]->description().name, QStringLiteral("Pause"));
        fixture.say(MusicFixture::paused(report));
        QCOMPARE(parts.buttons[1]->symbol(), QStringLiteral("play.fill"));
        QCOMPARE(parts.buttons[1]->description().name, QStringLiteral("Play"));
        QVERIFY(parts.buttons[1]->isTouchable());
        QVERIFY(parts.progress->isVisible());
        QVERIFY(!parts.artwork->picture().isNull());
        QCOMPARE(title(widget), QStringLiteral("One"));
        QCOMPARE(artist(widget), QStringLiteral("Artist"));
    }

    void everyPartHasAName()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        QStringList names;
        for (const BarItem *item : barItems(widget)) {
            QCOMPARE(item->description().role, QAccessible::Button);
            names.append(item->description().name);
        }
        QCOMPARE(names,
            (QStringList{QStringLiteral("Open Player"), QStringLiteral("Previous"), QStringLiteral("Pause"),
                QStringLiteral("Next")}));
    }

    void symbolsAreOfTheirSizes()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        QVERIFY(!rendered(widget).isNull());
        QCOMPARE(fixture.lastRequest(QStringLiteral("backward.end.fill")).pointSize, 11.0);
        QCOMPARE(fixture.lastRequest(QStringLiteral("pause.fill")).pointSize, 12.0);
        QCOMPARE(fixture.lastRequest(QStringLiteral("forward.end.fill")).pointSize, 11.0);
        QCOMPARE(fixture.lastRequest(QStringLiteral("waveform")).pointSize, 16.0);
        for (const char *name : {"backward.end.fill", "pause.fill", "forward.end.fill"})
            QCOMPARE(fixture.lastRequest(QString::fromLatin1(name)).weight, SymbolWeight::semibold);
    }

    void aDoubleClickOnAButtonIsTwoCommands()
    {
        WidgetFixture fixture;
        Hand hand;
        auto *widget = new MusicWidget(fixture.context());
        hand.scene.addItem(widget);
        fixture.say(one);
        const TransportButton *button = Parts(*widget).buttons[1];
        hand.doubleClick(button->mapRectToScene(button->rect()).center().toPoint());
        const QPair playPause(MusicSource::spotify, MusicCommand::playPause);
        QCOMPARE(fixture.platform.mediaPlayers.sent, (QList{playPause, playPause}));
    }

    void whatThePlayerDoesNotObeyIsNotOffered()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        PlayerReport report = one;
        report.canGoNext = false;
        fixture.say(report);
        const Parts parts(widget);
        QCOMPARE(parts.buttons[2]->opacity(), 0.35);
        QVERIFY(!parts.buttons[2]->isTouchable());
        parts.buttons[2]->press();
        QVERIFY(fixture.platform.mediaPlayers.sent.isEmpty());
        QVERIFY(parts.buttons[0]->isTouchable() && parts.buttons[1]->isTouchable());
        report.canGoNext = true;
        report.canGoPrevious = false;
        report.canPlayPause = false;
        fixture.say(report);
        QVERIFY(!parts.buttons[0]->isTouchable() && !parts.buttons[1]->isTouchable());
        QVERIFY(parts.buttons[2]->isTouchable());
    }

    void goesBackToNothing()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        const QImage nothing = rendered(widget);
        fixture.say(one);
        QVERIFY(rendered(widget) != nothing);
        fixture.quit();
        QCOMPARE(rendered(widget), nothing);
    }

    void sameMusicPaintsNothing()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(MusicFixture::paused(one));
        RepaintCounter counter(widget);
        fixture.platform.clock.advance(1min);
        QCOMPARE(counter.takeRepaints(), 0);
        fixture.say(MusicFixture::paused(named(QStringLiteral("Two"), {})));
        QCOMPARE(counter.takeRepaints(), 1);
    }

    void mayEndWhenItsPlayerIsToldSomething()
    {
        WidgetFixture fixture;
        auto widget = std::make_unique<MusicWidget>(fixture.context());
        fixture.say(one);
        Parts(*widget).buttons.first()->press();
        widget.reset();
        fixture.platform.clock.advance(10s);
        QCOMPARE(fixture.platform.mediaPlayers.sent.size(), 1);
    }
};

MOORLINE_TEST(MusicWidgetTest);
#include "MusicWidgetTest.moc"

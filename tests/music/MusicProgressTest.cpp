#include "WidgetFixture.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// Of two hundred seconds, so that 232 points move by 1.16 a second.
const PlayerReport one = MusicFixture::track(QStringLiteral("One"));

/// What of a scene asks to be repainted.
class Repainted final : public QGraphicsScene {
public:
    explicit Repainted(QGraphicsWidget &widget)
        : m_widget(widget)
    {
        addItem(&widget);
        QCoreApplication::processEvents();
        connect(this, &QGraphicsScene::changed, this, [this](const QList<QRectF> &regions) {
            for (const QRectF &region : regions)
                m_region |= region;
        });
    }
    ~Repainted() override { removeItem(&m_widget); }

    /// Since the last time; empty when nothing does.
    QRectF take()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_region, {});
    }

private:
    QGraphicsWidget &m_widget;
    QRectF m_region;
};

/// How much of the bar is filled, in points.
qreal filled(ProgressBar &bar)
{
    constexpr int scale = 2;
    const QImage image = painted(bar, scale);
    int width = 0;
    while (width < image.width() && image.pixelColor(width, image.height() / 2).alpha() > 100)
        ++width;
    return qreal(width) / scale;
}

} // namespace

/// How the progress bar runs on, and how little that costs.
class MusicProgressTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void runsOnBetweenPolls()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(MusicFixture::at(one, 50));
        ProgressBar &bar = *Parts(widget).progress;
        QCOMPARE(filled(bar), 58.0);
        fixture.platform.mediaPlayers.isSlow = true;
        fixture.platform.clock.advance(10s);
        QCOMPARE(filled(bar), 69.5);
        fixture.platform.clock.advance(10min);
        QCOMPARE(filled(bar), 232.0);
        QVERIFY(fixture.platform.mediaPlayers.answer(std::nullopt));
    }

    void repaintsItselfAlone()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(one);
        const ProgressBar &bar = *Parts(widget).progress;
        Repainted repainted(widget);
        fixture.platform.clock.advance(30s);
        const QRectF region = repainted.take();
        QVERIFY(!region.isEmpty());
        // A scene adds a pixel around what it repaints.
        QVERIFY(bar.sceneBoundingRect().adjusted(-2, -2, 2, 2).contains(region));
    }

    void repaintsForAVisibleStepOnly()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        PlayerReport slow = one;
        slow.duration = 23200;
        fixture.say(slow);
        fixture.platform.mediaPlayers.isSlow = true;
        RepaintCounter counter(widget);
        int repaints = 0;
        for (int tick = 0; tick < 400; ++tick) {
            fixture.platform.clock.advance(500ms);
            repaints += counter.takeRepaints();
        }
        // Two hundred seconds are two points.
        QVERIFY2(repaints >= 3 && repaints <= 4, qPrintable(QString::number(repaints)));
        QVERIFY(fixture.platform.mediaPlayers.answer(std::nullopt));
    }

    void pausedItStandsStill()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        fixture.say(MusicFixture::paused(MusicFixture::at(one, 50)));
        RepaintCounter counter(widget);
        fixture.platform.clock.advance(1min);
        QCOMPARE(counter.takeRepaints(), 0);
        QCOMPARE(filled(*Parts(widget).progress), 58.0);
    }

    void inTheCompactStyleNothingIsRepainted()
    {
        WidgetFixture fixture;
        fixture.setStyle(MusicStyle::compact);
        MusicWidget widget(fixture.context());
        fixture.say(one);
        RepaintCounter counter(widget);
        fixture.platform.clock.advance(1min);
        QCOMPARE(counter.takeRepaints(), 0);
    }

    void ofAnUnknownLengthItIsEmpty()
    {
        WidgetFixture fixture;
        MusicWidget widget(fixture.context());
        PlayerReport endless = MusicFixture::at(one, 50);
        endless.duration = 0;
        fixture.say(endless);
        QVERIFY(Parts(widget).progress->isVisible());
        QCOMPARE(filled(*Parts(widget).progress), 0.0);
    }

    void itsColoursAreThoseOfACapsule()
    {
        ProgressBar bar(nullptr);
        bar.resize(232, 3);
        bar.setProgress(0.5);
        QCOMPARE(ProgressBar::height, 3.0);
        const QImage image = painted(bar);
        QCOMPARE(image.pixelColor(200, 1).alpha(), qRound(0.12 * 255));
        // Over the track, which is as wide as the bar.
        QVERIFY(std::abs(image.pixelColor(50, 1).alpha() - qRound((0.55 + 0.45 * 0.12) * 255)) <= 1);
        // Round at both ends.
        QVERIFY(image.pixelColor(0, 0).alpha() < 0.7 * image.pixelColor(50, 0).alpha());
        QVERIFY(image.pixelColor(231, 2).alpha() < 0.7 * image.pixelColor(200, 2).alpha());
    }
};

MOORLINE_TEST(MusicProgressTest);
#include "MusicProgressTest.moc"

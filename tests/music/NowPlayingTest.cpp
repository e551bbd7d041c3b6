#include "music/NowPlaying.h"

#include "harness/TestCase.h"

#include <limits>

using namespace moorline;
using namespace moorline::test;

namespace {

const QDateTime noon(QDate(2025, 3, 4), QTime(12, 0));

NowPlaying playing(double position, double duration)
{
    NowPlaying record;
    record.source = MusicSource::spotify;
    record.isPlaying = true;
    record.position = position;
    record.duration = duration;
    record.updatedAt = noon;
    return record;
}

} // namespace

class NowPlayingTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void nothingIsEmpty()
    {
        const NowPlaying nothing = NowPlaying::nothing();
        QVERIFY(!nothing.source && !nothing.isPlaying && !nothing.hasTrack());
        QVERIFY(nothing.title.isEmpty() && nothing.artist.isEmpty());
        QVERIFY(nothing.album.isEmpty() && nothing.trackId.isEmpty());
        QCOMPARE(nothing.position, 0.0);
        QCOMPARE(nothing.duration, 0.0);
        QVERIFY(!nothing.artworkUrl && !nothing.updatedAt.isValid());
        QCOMPARE(nothing.progress(noon), 0.0);
        for (const auto command : {MusicCommand::playPause, MusicCommand::next, MusicCommand::previous})
            QVERIFY(!nothing.obeys(command));
    }

    void progress_data()
    {
        QTest::addColumn<NowPlaying>("record");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<double>("progress");
        const auto row = [](const char *name, const NowPlaying &record, int seconds, double progress) {
            QTest::newRow(name) << record << seconds << progress;
        };
        NowPlaying paused = playing(50, 200);
        paused.isPlaying = false;
        NowPlaying pausedBeyond = playing(250, 200);
        pausedBeyond.isPlaying = false;
        row("unknown length", playing(50, 0), 10, 0);
        row("a length below nothing", playing(50, -1), 10, 0);
        row("at the poll", playing(50, 200), 0, 0.25);
        row("ten seconds later", playing(50, 200), 10, 0.3);
        row("paused it stays", paused, 10, 0.25);
        row("at its end it stays", playing(100, 105), 10, 1);
        row("beyond its end", playing(300, 200), 0, 1);
        row("paused beyond its end", pausedBeyond, 0, 1);
        row("before its beginning", playing(-50, 200), 10, 0);
        row("the clock was set back", playing(50, 200), -3600, 0.25);
    }

    void progress()
    {
        QFETCH(const NowPlaying, record);
        QFETCH(const int, seconds);
        QFETCH(const double, progress);
        QCOMPARE(record.progress(noon.addSecs(seconds)), progress);
    }

    void aRecordIsWhatThePlayerSays()
    {
        const PlayerReport report{.isPlaying = true,
            .trackId = QStringLiteral("1"),
            .title = QStringLiteral("Title"),
            .artist = QStringLiteral("Artist"),
            .album = QStringLiteral("Album"),
            .duration = 200,
            .position = 12.5,
            .artwork = QUrl(QStringLiteral("https://example.org/1")),
            .canPlayPause = true,
            .canGoNext = false,
            .canGoPrevious = true};
        const NowPlaying record = NowPlaying::of(MusicSource::music, report, noon);
        QCOMPARE(record.source, std::optional(MusicSource::music));
        QVERIFY(record.isPlaying && record.hasTrack());
        QCOMPARE(record.trackId, QStringLiteral("1"));
        QCOMPARE(record.title, QStringLiteral("Title"));
        QCOMPARE(record.artist, QStringLiteral("Artist"));
        QCOMPARE(record.album, QStringLiteral("Album"));
        QCOMPARE(record.duration, 200.0);
        QCOMPARE(record.position, 12.5);
        QCOMPARE(record.artworkUrl, report.artwork);
        QCOMPARE(record.updatedAt, noon);
        QVERIFY(record.obeys(MusicCommand::playPause));
        QVERIFY(!record.obeys(MusicCommand::next));
        QVERIFY(record.obeys(MusicCommand::previous));
    }

    void whatIsNoNumberIsNothing()
    {
        PlayerReport report;
        report.duration = std::numeric_limits<double>::infinity();
        report.position = std::numeric_limits<double>::quiet_NaN();
        const NowPlaying record = NowPlaying::of(MusicSource::music, report, noon);
        QCOMPARE(record.duration, 0.0);
        QCOMPARE(record.position, 0.0);
    }

    void aTrackNeedsATitle()
    {
        NowPlaying record = playing(0, 0);
        QVERIFY(!record.hasTrack());
        record.title = QStringLiteral("Title");
        QVERIFY(record.hasTrack());
        record.source.reset();
        QVERIFY(!record.hasTrack());
    }
};

MOORLINE_TEST(NowPlayingTest);
#include "NowPlayingTest.moc"

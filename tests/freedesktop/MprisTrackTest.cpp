#include "MprisSamples.h"
#include "freedesktop/MprisProperties.h"
#include "harness/TestCase.h"

#include <cmath>
#include <limits>

namespace {

using moorline::MprisProperties;
using moorline::test::sound;
using moorline::test::withTrack;
using Status = MprisProperties::Status;

class MprisTrackTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aLengthMayBeAnyNumber_data();
    void aLengthMayBeAnyNumber();
    void anArtistMayBeATextOrSeveral_data();
    void anArtistMayBeATextOrSeveral();
    void aTextIsCutWhereItIsTooLong();
    void artworkIsAFileAnAddressOrItself_data();
    void artworkIsAFileAnAddressOrItself();
    void aProcessIsANumberOfOne_data();
    void aProcessIsANumberOfOne();
    void aPositionIsWithinItsTrack_data();
    void aPositionIsWithinItsTrack();
    void theTitleIsTheTracksElseTheFilesElseThePlayers_data();
    void theTitleIsTheTracksElseTheFilesElseThePlayers();
    void everyPartTellsTracksApart();
};

void MprisTrackTest::aLengthMayBeAnyNumber_data()
{
    QTest::addColumn<QVariant>("told");
    QTest::addColumn<double>("seconds");
    QTest::newRow("x") << QVariant(qint64(1'500'000)) << 1.5;
    QTest::newRow("t") << QVariant(quint64(1'500'000)) << 1.5;
    QTest::newRow("i") << QVariant(qint32(1'500'000)) << 1.5;
    QTest::newRow("u") << QVariant(quint32(1'500'000)) << 1.5;
    QTest::newRow("n") << QVariant::fromValue(qint16(15'000)) << 0.015;
    QTest::newRow("q") << QVariant::fromValue(quint16(15'000)) << 0.015;
    QTest::newRow("y") << QVariant::fromValue(uchar(100)) << 0.0001;
    QTest::newRow("d") << QVariant(1'500'000.0) << 1.5;
    QTest::newRow("zero") << QVariant(qint64(0)) << 0.0;
    QTest::newRow("below") << QVariant(qint64(-1)) << 0.0;
    QTest::newRow("far below") << QVariant(std::numeric_limits<qint64>::min()) << 0.0;
    QTest::newRow("seven days") << QVariant(qint64(604'800'000'000)) << 604'800.0;
    QTest::newRow("more") << QVariant(qint64(604'800'000'001)) << 0.0;
    QTest::newRow("the most") << QVariant(std::numeric_limits<qint64>::max()) << 0.0;
    QTest::newRow("the most without a sign") << QVariant(std::numeric_limits<quint64>::max()) << 0.0;
    QTest::newRow("no number") << QVariant(std::nan("")) << 0.0;
    QTest::newRow("without end") << QVariant(std::numeric_limits<double>::infinity()) << 0.0;
    QTest::newRow("without beginning") << QVariant(-std::numeric_limits<double>::infinity()) << 0.0;
}

void MprisTrackTest::aLengthMayBeAnyNumber()
{
    QFETCH(const QVariant, told);
    QFETCH(const double, seconds);
    QCOMPARE(withTrack(QStringLiteral("mpris:length"), told).duration, seconds);
}

void MprisTrackTest::anArtistMayBeATextOrSeveral_data()
{
    QTest::addColumn<QVariant>("told");
    QTest::addColumn<QString>("artist");
    QTest::newRow("none") << QVariant(QStringList()) << QString();
    QTest::newRow("one") << QVariant(QStringList{QStringLiteral("A")}) << QStringLiteral("A");
    QTest::newRow("a text") << QVariant(QStringLiteral("A & B")) << QStringLiteral("A & B");
    QTest::newRow("with gaps") << QVariant(QStringList{QString(), QStringLiteral("A"), QStringLiteral("  "),
        QStringLiteral("B")}) << QStringLiteral("A, B");
    QTest::newRow("a crowd") << QVariant(QStringList(100'000, QStringLiteral("AB")))
                             << QStringLiteral("AB, ").repeated(1024);
}

void MprisTrackTest::anArtistMayBeATextOrSeveral()
{
    QFETCH(const QVariant, told);
    QFETCH(const QString, artist);
    QCOMPARE(withTrack(QStringLiteral("xesam:artist"), told).artist, artist);
}

void MprisTrackTest::aTextIsCutWhereItIsTooLong()
{
    const QString longest(4096, u'a');
    QCOMPARE(withTrack(QStringLiteral("xesam:title"), longest).title, longest);
    QCOMPARE(withTrack(QStringLiteral("xesam:title"), longest + u'b').title, longest);
}

void MprisTrackTest::artworkIsAFileAnAddressOrItself_data()
{
    QTest::addColumn<QString>("told");
    QTest::addColumn<std::optional<QUrl>>("artwork");
    const auto row = [](const char *name, const QString &told, bool isKept) {
        QTest::newRow(name) << told << (isKept ? std::optional(QUrl(told)) : std::nullopt);
    };
    row("a file", QStringLiteral("file:///tmp/cover.png"), true);
    row("an address", QStringLiteral("http://example.org/cover?size=large"), true);
    row("a safe one", QStringLiteral("https://example.org/cover"), true);
    row("itself", QStringLiteral("data:image/png;base64,iVBORw0KGgo="), true);
    row("itself, shouted", QStringLiteral("DATA:IMAGE/PNG;BASE64,iVBORw0KGgo="), true);
    row("nothing", QString(), false);
    row("another text itself", QStringLiteral("data:text/plain,cover"), false);
    row("a path", QStringLiteral("/tmp/cover.png"), false);
    row("another scheme", QStringLiteral("ftp://example.org/cover"), false);
    row("a program", QStringLiteral("javascript:alert(1)"), false);
    row("a resource of ours", QStringLiteral("qrc:/symbols/clock"), false);
    row("no address", QStringLiteral("http://[cover"), false);
    const QString start = QStringLiteral("https://example.org/");
    row("a long one", start + QString(4096 - start.size(), u'a'), true);
    row("too long a one", start + QString(4097 - start.size(), u'a'), false);
    const QString data = QStringLiteral("data:image/png;base64,");
    row("a large one itself", data + QString(14 * 1024 * 1024 - data.size(), u'A'), true);
    row("too large a one itself", data + QString(14 * 1024 * 1024 + 1 - data.size(), u'A'), false);
}

void MprisTrackTest::artworkIsAFileAnAddressOrItself()
{
    QFETCH(const QString, told);
    QFETCH(const std::optional<QUrl>, artwork);
    QCOMPARE(withTrack(QStringLiteral("mpris:artUrl"), told).artwork, artwork);
}

void MprisTrackTest::aProcessIsANumberOfOne_data()
{
    QTest::addColumn<QVariant>("told");
    QTest::addColumn<std::optional<qint64>>("process");
    QTest::newRow("i") << QVariant(qint32(42)) << std::optional<qint64>(42);
    QTest::newRow("u") << QVariant(quint32(42)) << std::optional<qint64>(42);
    QTest::newRow("x") << QVariant(qint64(42)) << std::optional<qint64>(42);
    QTest::newRow("none") << QVariant() << std::optional<qint64>();
    QTest::newRow("zero") << QVariant(0) << std::optional<qint64>();
    QTest::newRow("below") << QVariant(-42) << std::optional<qint64>();
    QTest::newRow("beyond") << QVariant(qint64(2'147'483'648)) << std::optional<qint64>();
    QTest::newRow("a text") << QVariant(QStringLiteral("42")) << std::optional<qint64>();
    QTest::newRow("no number") << QVariant(std::nan("")) << std::optional<qint64>();
}

void MprisTrackTest::aProcessIsANumberOfOne()
{
    QFETCH(const QVariant, told);
    QFETCH(const std::optional<qint64>, process);
    QCOMPARE(withTrack(QStringLiteral("kde:pid"), told).spokenForProcess, process);
}

void MprisTrackTest::aPositionIsWithinItsTrack_data()
{
    QTest::addColumn<QVariant>("told");
    QTest::addColumn<double>("duration");
    QTest::addColumn<double>("seconds");
    QTest::newRow("in the middle") << QVariant(qint64(12'500'000)) << 100.0 << 12.5;
    QTest::newRow("as another number") << QVariant(12'500'000.0) << 100.0 << 12.5;
    QTest::newRow("beyond") << QVariant(qint64(100'000'001)) << 100.0 << 100.0;
    QTest::newRow("before") << QVariant(qint64(-5)) << 100.0 << 0.0;
    QTest::newRow("of unknown length") << QVariant(qint64(100'000'001)) << 0.0 << 100.000001;
    QTest::newRow("beyond any track") << QVariant(std::numeric_limits<qint64>::max()) << 0.0 << 604'800.0;
    QTest::newRow("nothing") << QVariant() << 100.0 << 0.0;
    QTest::newRow("a text") << QVariant(QStringLiteral("12")) << 100.0 << 0.0;
    QTest::newRow("no number") << QVariant(std::nan("")) << 100.0 << 0.0;
}

void MprisTrackTest::aPositionIsWithinItsTrack()
{
    QFETCH(const QVariant, told);
    QFETCH(const double, duration);
    QFETCH(const double, seconds);
    QCOMPARE(moorline::mprisPosition(told, duration), seconds);
}

void MprisTrackTest::theTitleIsTheTracksElseTheFilesElseThePlayers_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *title, const char *url, const char *shown) {
        QTest::newRow(name) << QString::fromUtf8(title) << QString::fromUtf8(url) << QString::fromUtf8(shown);
    };
    row("its own", "Song", "file:///music/01.flac", "Song");
    row("as it stands", " Song ", "", " Song ");
    row("the file's", "", "file:///music/01%20%C3%84rger.flac", "01 Ärger.flac");
    row("the file's for blanks", " \t", "file:///music/01.flac", "01.flac");
    row("a path's", "", "/music/01.flac", "01.flac");
    row("an address's", "", "https://radio.example.org/live?bitrate=320", "live");
    row("the player's", "", "", "A player");
    row("the player's for an address without a file", "", "https://radio.example.org/", "A player");
    row("the player's for no address", "", "http://[x", "A player");
}

void MprisTrackTest::theTitleIsTheTracksElseTheFilesElseThePlayers()
{
    QFETCH(const QString, title);
    QFETCH(const QString, url);
    QFETCH(const QString, shown);
    QCOMPARE(moorline::shownTitle({.url = url, .title = title}, {.name = QStringLiteral("A player")}), shown);
}

void MprisTrackTest::everyPartTellsTracksApart()
{
    const QString owner = QStringLiteral(":1.7");
    const QString digest = moorline::trackDigest(owner, sound());
    QCOMPARE(digest.size(), 64);
    MprisProperties later = sound();
    later.duration = 1;
    later.status = Status::paused;
    later.artwork.reset();
    QCOMPARE(moorline::trackDigest(owner, later), digest);

    QSet<QString> others{digest, moorline::trackDigest(QStringLiteral(":1.8"), sound())};
    for (QString MprisProperties::*part : {&MprisProperties::trackId, &MprisProperties::url, &MprisProperties::title,
             &MprisProperties::artist, &MprisProperties::album}) {
        MprisProperties other = sound();
        (other.*part).append(u'!');
        others.insert(moorline::trackDigest(owner, other));
    }
    // What moves from one part to the next is another track as well.
    MprisProperties moved = sound();
    moved.title += moved.artist.front();
    moved.artist.remove(0, 1);
    others.insert(moorline::trackDigest(owner, moved));
    QCOMPARE(others.size(), 8);
}

MOORLINE_TEST(MprisTrackTest);

} // namespace

#include "MprisTrackTest.moc"

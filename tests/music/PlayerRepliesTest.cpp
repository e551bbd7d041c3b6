#include "harness/TestCase.h"
#include "music/PlayerScripts.h"

using namespace moorline;
using namespace moorline::test;

namespace {

using Report = std::optional<PlayerReport>;

/// A reply as it is read more easily: with bars for separators.
Report parsed(QString reply)
{
    return parsedReply(reply.replace(u'|', QChar(0x1f)));
}

PlayerReport whole()
{
    return {.isPlaying = true,
        .trackId = QStringLiteral("42"),
        .title = QStringLiteral("Title"),
        .artist = QStringLiteral("Artist"),
        .album = QStringLiteral("Album"),
        .duration = 200.5,
        .position = 12.5,
        .artwork = QUrl(QStringLiteral("https://example.org/a.jpg"))};
}

/// The whole reply with another text in one of its fields.
QString replyWith(int field, const QString &text)
{
    QStringList fields{QStringLiteral("playing"), QStringLiteral("42"), QStringLiteral("Title"),
        QStringLiteral("Artist"), QStringLiteral("Album"), QStringLiteral("200.5"), QStringLiteral("12.5"),
        QStringLiteral("https://example.org/a.jpg")};
    fields[field] = text;
    return fields.join(u'|');
}

enum Field { state, trackId, title, artist, album, duration, position, artwork };

} // namespace

/// What players reply, whole and damaged.
class PlayerRepliesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aWholeReply()
    {
        QCOMPARE(parsed(QStringLiteral("playing|42|Title|Artist|Album|200.5|12.5|https://example.org/a.jpg")),
            Report(whole()));
    }

    void everyCommandIsObeyed()
    {
        const Report report = parsed(replyWith(state, QStringLiteral("paused")));
        QVERIFY(report->canPlayPause && report->canGoNext && report->canGoPrevious);
    }

    void noResult_data()
    {
        QTest::addColumn<QString>("reply");
        const auto row = [](const char *name, const QString &reply) { QTest::newRow(name) << reply; };
        row("empty", {});
        row("stopped", QStringLiteral("STOPPED"));
        row("stopped in small letters", QStringLiteral("stopped"));
        row("one field", QStringLiteral("playing"));
        row("a separator alone", QStringLiteral("|"));
        row("six separators", QStringLiteral("||||||"));
        row("seven fields", QStringLiteral("playing|42|Title|Artist|Album|200.5|12.5"));
        row("cut in the title", QStringLiteral("playing|42|Ti"));
        row("an error message", QStringLiteral("execution error: Music got an error (-1728)"));
        row("commas for separators", QStringLiteral("playing, 42, Title, Artist, Album, 200.5, 12.5, "));
        row("another separator", QStringLiteral("playing\x1e") + QString(6, QChar(0x1e)));
        row("a missing value", QStringLiteral("missing value"));
        row("many lines", QStringLiteral("a\nb\nc\nd\ne\nf\ng\nh"));
    }

    void noResult()
    {
        QFETCH(const QString, reply);
        QCOMPARE(parsed(reply), Report());
    }

    void damaged_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<PlayerReport>("expected");
        const auto row = [](const char *name, int field, const char *text, auto change) {
            PlayerReport expected = whole();
            change(expected);
            QTest::newRow(name) << replyWith(field, QString::fromUtf8(text)) << expected;
        };
        const auto notPlaying = [](PlayerReport &report) { report.isPlaying = false; };
        const auto lasting = [](double seconds) {
            return [seconds](PlayerReport &report) { report.duration = seconds; };
        };
        const auto at = [](double seconds) { return [seconds](PlayerReport &report) { report.position = seconds; }; };
        const auto nowhere = [](PlayerReport &report) { report.artwork.reset(); };

        row("PLAYING", state, "PLAYING", [](PlayerReport &) {});
        row("Playing", state, "Playing", [](PlayerReport &) {});
        row("paused", state, "paused", notPlaying);
        row("stopped", state, "stopped", notPlaying);
        row("fast forwarding", state, "fast forwarding", notPlaying);
        row("no state", state, "", notPlaying);
        row("a state in quotes", state, "\"playing\"", notPlaying);
        row("a state with a blank", state, " playing", notPlaying);
        row("a state in four letters", state, "kPSP", notPlaying);

        row("no track", trackId, "", [](PlayerReport &report) { report.trackId.clear(); });
        row("a track in blanks", trackId, " 42 ",
            [](PlayerReport &report) { report.trackId = QStringLiteral(" 42 "); });
        row("a track with a path", trackId, "../../x",
            [](PlayerReport &report) { report.trackId = QStringLiteral("../../x"); });
        row("no title", title, "", [](PlayerReport &report) { report.title.clear(); });
        row("a title of lines", title, "a\nb\r", [](PlayerReport &report) { report.title = QStringLiteral("a\nb\r"); });
        row("a title with a nil", title, "Ti\xef\xbf\xbdtle",
            [](PlayerReport &report) { report.title = QStringLiteral("Ti\ufffdtle"); });
        row("a missing artist", artist, "missing value",
            [](PlayerReport &report) { report.artist = QStringLiteral("missing value"); });
        row("no album", album, "", [](PlayerReport &report) { report.album.clear(); });

        row("no length", duration, "", lasting(0));
        row("a length of blanks", duration, " \t ", lasting(0));
        row("a decimal comma", duration, "200,5", lasting(200.5));
        row("blanks around", duration, " \t200.5\t ", lasting(200.5));
        row("a blank within", duration, "2 00", lasting(0));
        row("a line before", duration, "\n200", lasting(0));
        row("a line behind", duration, "200\n", lasting(0));
        row("a wide blank", duration,
            "\u00a0"
            "200",
            lasting(0));
        row("a missing length", duration, "missing value", lasting(0));
        row("a length with its unit", duration, "200 s", lasting(0));
        row("thousands", duration, "1,234.5", lasting(0));
        row("two commas", duration, "1,2,3", lasting(0));
        row("with an exponent", duration, "1.5E+2", lasting(150));
        row("a comma and an exponent", duration, "1,5E+2", lasting(150));
        row("too large", duration, "1e999", lasting(0));
        row("endless", duration, "inf", lasting(0));
        row("no number", duration, "nan", lasting(0));
        row("hexadecimal", duration, "0x10", lasting(0));
        row("a point alone", duration, ".", lasting(0));
        row("a sign alone", duration, "-", lasting(0));
        row("below nothing", duration, "-1", lasting(-1));
        row("other digits", duration, "\u0662\u0660\u0660", lasting(0));

        row("a position with a comma", position, "12,5", [](PlayerReport &) {});
        row("no position", position, "", at(0));
        row("a missing position", position, "missing value", at(0));
        row("before the beginning", position, "-0,25", at(-0.25));
        row("a position with a sign", position, "+3", at(3));
        row("a position in words", position, "twelve", at(0));

        row("no artwork", artwork, "", nowhere);
        row("no valid address", artwork, "https://[", nowhere);
        row("blanks in an address", artwork, "https://example.org/a b", nowhere);
        row("a bad escape", artwork, "https://example.org/%zz", nowhere);
        row("a file", artwork, "file:///tmp/a.png",
            [](PlayerReport &report) { report.artwork = QUrl(QStringLiteral("file:///tmp/a.png")); });
        row("a ninth field", artwork, "https://example.org/a.jpg|more", [](PlayerReport &) {});
    }

    void damaged()
    {
        QFETCH(const QString, reply);
        QFETCH(const PlayerReport, expected);
        QCOMPARE(parsed(reply), Report(expected));
    }

    void emptyFieldsAreAReply() { QCOMPARE(parsed(QStringLiteral("|||||||")), Report(PlayerReport())); }

    void aReplyOfAMillionLettersIsOne()
    {
        PlayerReport expected = whole();
        expected.title = QString(1000000, u'x');
        QCOMPARE(parsed(replyWith(title, expected.title)), Report(expected));
    }
};

MOORLINE_TEST(PlayerRepliesTest);
#include "PlayerRepliesTest.moc"

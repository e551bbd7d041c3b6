#include "freedesktop/MprisChoice.h"
#include "harness/TestCase.h"

namespace {

using moorline::MprisCandidate;
using moorline::MprisKind;
using moorline::MprisProperties;
using Status = MprisProperties::Status;
using Players = QList<MprisCandidate>;

class MprisChoiceTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theNameSaysWhatAPlayerCountsAs_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<MprisKind>("kind");
        const auto row = [](const char *name, MprisKind kind) {
            QTest::newRow(name) << QStringLiteral("org.mpris.MediaPlayer2.") + QString::fromLatin1(name) << kind;
        };
        row("spotify", MprisKind::spotify);
        row("spotify.instance", MprisKind::spotify);
        row("spotify.instance1234", MprisKind::spotify);
        row("spotifyd", MprisKind::other);
        row("spotifyd.instance1234", MprisKind::other);
        row("spotify.web", MprisKind::other);
        row("spotify_player", MprisKind::other);
        row("Spotify", MprisKind::other);
        row("vlc", MprisKind::other);
        row("playerctld", MprisKind::repeater);
        row("playerctldx", MprisKind::other);
    }
    void theNameSaysWhatAPlayerCountsAs()
    {
        QFETCH(const QString, name);
        QFETCH(const MprisKind, kind);
        QCOMPARE(moorline::mprisKind(name), kind);
    }

    void eachPlayerHasOneName_data()
    {
        QTest::addColumn<QStringList>("ofOne");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *what, const QStringList &ofOne, const QString &name) {
            QTest::newRow(what) << ofOne << name;
        };
        const QString vlc = QStringLiteral("vlc");
        const QString spotify = QStringLiteral("spotify");
        const QString repeater = QStringLiteral("playerctld");
        row("its own", {vlc}, vlc);
        row("the first of two", {vlc, QStringLiteral("vlc.instance42")}, vlc);
        row("Spotify's, which comes last", {QStringLiteral("other"), spotify}, spotify);
        row("Spotify's, which comes first", {spotify, vlc}, spotify);
        row("not the repeater's", {repeater, vlc}, vlc);
        row("none", {repeater}, {});
    }
    void eachPlayerHasOneName()
    {
        QFETCH(const QStringList, ofOne);
        QFETCH(const QString, name);
        const QString prefix = QStringLiteral("org.mpris.MediaPlayer2.");
        const QString another = prefix + QStringLiteral("mpv");
        QMap<QString, QString> owners{{another, QStringLiteral(":1.2")}};
        for (const QString &one : ofOne)
            owners.insert(prefix + one, QStringLiteral(":1.1"));
        QMap<QString, QString> expected{{QStringLiteral(":1.2"), another}};
        if (!name.isEmpty())
            expected.insert(QStringLiteral(":1.1"), prefix + name);
        QCOMPARE(moorline::mprisNames(owners), expected);
    }

    void theBrowsersIntegrationSpeaksForItsProcess()
    {
        const QString name = QStringLiteral("org.mpris.MediaPlayer2.plasma-browser-integration");
        MprisProperties properties{.title = QStringLiteral("A tab"), .spokenForProcess = 42};
        QCOMPARE(moorline::browserSpokenFor(name, properties), std::optional<qint64>(42));
        QVERIFY(!moorline::browserSpokenFor(QStringLiteral("org.mpris.MediaPlayer2.other"), properties));
        properties.title.clear();
        QVERIFY(!moorline::browserSpokenFor(name, properties));
    }

    void whoeverIsSpokenForIsNotHeard()
    {
        const Players players{
            {.process = 42}, {.process = 43}, {.process = 7, .browser = 42}, {.process = std::nullopt}};
        QVERIFY(!moorline::isHeard(players, 0));
        QVERIFY(moorline::isHeard(players, 1));
        QVERIFY(moorline::isHeard(players, 2));
        QVERIFY(moorline::isHeard(players, 3));
    }

    void whoeverSpeaksForItselfIsHeard() { QVERIFY(moorline::isHeard({{.process = 42, .browser = 42}}, 0)); }

    void aRepeaterIsNotHeard()
    {
        QVERIFY(!moorline::isHeard({{.kind = MprisKind::repeater, .status = Status::playing}}, 0));
    }

    void oneThatIsHeardIsEnough()
    {
        const MprisCandidate browser{.process = 42};
        const MprisCandidate spotify{.kind = MprisKind::spotify, .browser = 42};
        QVERIFY(!moorline::isAnyHeard({}, MprisKind::other));
        QVERIFY(!moorline::isAnyHeard({browser, spotify}, MprisKind::other));
        QVERIFY(moorline::isAnyHeard({browser, spotify}, MprisKind::spotify));
        QVERIFY(moorline::isAnyHeard({browser, spotify, {.process = 43}}, MprisKind::other));
    }

    void theBestIsChosen_data()
    {
        QTest::addColumn<Players>("players");
        QTest::addColumn<std::optional<qsizetype>>("best");
        const auto row = [](const char *name, const Players &players, std::optional<qsizetype> best) {
            QTest::newRow(name) << players << best;
        };
        const MprisCandidate spotify{.kind = MprisKind::spotify, .status = Status::playing, .turn = 9};
        row("nobody", {}, std::nullopt);
        row("of another kind", {spotify}, std::nullopt);
        row("one that says nothing", {{}}, std::nullopt);
        row("one that stopped", {{.status = Status::stopped, .turn = 3}}, std::nullopt);
        row("one that paused", {{.status = Status::paused}}, 0);
        row("who plays before who paused later",
            {{.status = Status::paused, .turn = 5}, {.status = Status::playing, .turn = 2}}, 1);
        row("the latest to begin",
            {{.status = Status::playing, .turn = 1}, {.status = Status::playing, .turn = 3},
                {.status = Status::playing, .turn = 2}},
            1);
        row("the last that played",
            {{.status = Status::paused, .turn = 2}, {.status = Status::paused, .turn = 4}, {.status = Status::paused}},
            1);
        row("the first of those that never played", {{.status = Status::paused}, {.status = Status::paused}}, 0);
        row("not who is spoken for",
            {{.process = 42, .status = Status::playing, .turn = 2}, {.status = Status::paused, .browser = 42}}, 1);
        row("not a repeater",
            {{.kind = MprisKind::repeater, .status = Status::playing, .turn = 2}, {.status = Status::paused}}, 1);
    }
    void theBestIsChosen()
    {
        QFETCH(const Players, players);
        QFETCH(const std::optional<qsizetype>, best);
        QCOMPARE(moorline::bestPlayer(players, MprisKind::other), best);
    }

    void eachKindHasItsOwn()
    {
        const Players players{
            {.status = Status::playing, .turn = 2}, {.kind = MprisKind::spotify, .status = Status::paused}};
        QCOMPARE(moorline::bestPlayer(players, MprisKind::spotify), std::optional<qsizetype>(1));
        QCOMPARE(moorline::bestPlayer(players, MprisKind::other), std::optional<qsizetype>(0));
    }
};

MOORLINE_TEST(MprisChoiceTest);

} // namespace

#include "MprisChoiceTest.moc"

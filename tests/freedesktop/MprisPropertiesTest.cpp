#include "freedesktop/MprisProperties.h"
#include "MprisSamples.h"
#include "harness/TestCase.h"

namespace {

using moorline::MprisIdentity;
using moorline::MprisProperties;
using moorline::test::player;
using moorline::test::sound;
using moorline::test::withPlayer;
using moorline::test::withTrack;
using Status = MprisProperties::Status;

class MprisPropertiesTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everythingIsRead();
    void whetherItPlaysHasToBeSaid_data();
    void whetherItPlaysHasToBeSaid();
    void damageInOneThingIsFeltInThatAlone_data();
    void damageInOneThingIsFeltInThatAlone();
    void aTrackThatIsNoneLeavesTheRest_data();
    void aTrackThatIsNoneLeavesTheRest();
    void aPlayerDoesWhatItSays_data();
    void aPlayerDoesWhatItSays();
    void thePlayerSaysWhoItIs();
    void damageInItIsFeltInThatAlone_data();
    void damageInItIsFeltInThatAlone();
};

void MprisPropertiesTest::everythingIsRead()
{
    QCOMPARE(moorline::mprisProperties(player()), std::optional(sound()));
}

void MprisPropertiesTest::whetherItPlaysHasToBeSaid_data()
{
    QTest::addColumn<QVariant>("told");
    QTest::addColumn<std::optional<Status>>("status");
    const auto row = [](const char *name, const QVariant &told, std::optional<Status> status) {
        QTest::newRow(name) << told << status;
    };
    row("playing", QStringLiteral("Playing"), Status::playing);
    row("paused", QStringLiteral("Paused"), Status::paused);
    row("stopped", QStringLiteral("Stopped"), Status::stopped);
    row("nothing", QVariant(), std::nullopt);
    row("no text", QString(), std::nullopt);
    row("another case", QStringLiteral("playing"), std::nullopt);
    row("another word", QStringLiteral("Buffering"), std::nullopt);
    row("a truth", true, std::nullopt);
    row("a number", 1, std::nullopt);
    row("several texts", QStringList{QStringLiteral("Playing")}, std::nullopt);
    row("bytes", QByteArray("Playing"), std::nullopt);
}

void MprisPropertiesTest::whetherItPlaysHasToBeSaid()
{
    QFETCH(const QVariant, told);
    QFETCH(const std::optional<Status>, status);
    QVariantMap said = player();
    said.insert(QStringLiteral("PlaybackStatus"), told);
    const auto properties = moorline::mprisProperties(said);
    QCOMPARE(properties.has_value(), status.has_value());
    if (status)
        QCOMPARE(properties->status, *status);
}

void MprisPropertiesTest::damageInOneThingIsFeltInThatAlone_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("told");
    const QVariantList wrong{QVariant(), 7, 7.5, true, QByteArray("bytes"), QVariantMap{{QStringLiteral("a"), 1}},
        QVariantList{1, 2}, quint64(7)};
    const QStringList texts{QStringLiteral("mpris:trackid"), QStringLiteral("xesam:url"), QStringLiteral("xesam:title"),
        QStringLiteral("xesam:artist"), QStringLiteral("xesam:album"), QStringLiteral("mpris:artUrl")};
    for (const QString &key : texts) {
        for (const QVariant &value : wrong)
            QTest::addRow("%s as %s", qPrintable(key), value.typeName()) << key << value;
    }
    const QVariantList noLengths{QVariant(), QStringLiteral("245500000"), true, QByteArray("1"), QVariantMap(),
        QStringList{QStringLiteral("1")}};
    for (const QVariant &value : noLengths)
        QTest::addRow("mpris:length as %s", value.typeName()) << QStringLiteral("mpris:length") << value;
}

void MprisPropertiesTest::damageInOneThingIsFeltInThatAlone()
{
    QFETCH(const QString, key);
    QFETCH(const QVariant, told);
    MprisProperties expected = sound();
    const QHash<QString, QString *> texts{{QStringLiteral("mpris:trackid"), &expected.trackId},
        {QStringLiteral("xesam:url"), &expected.url}, {QStringLiteral("xesam:title"), &expected.title},
        {QStringLiteral("xesam:artist"), &expected.artist}, {QStringLiteral("xesam:album"), &expected.album}};
    if (QString *text = texts.value(key))
        text->clear();
    else if (key == QLatin1StringView("mpris:artUrl"))
        expected.artwork.reset(), expected.artworkText.clear();
    else
        expected.duration = 0;
    QCOMPARE(withTrack(key, told), expected);
}

void MprisPropertiesTest::aTrackThatIsNoneLeavesTheRest_data()
{
    QTest::addColumn<QVariant>("track");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("an empty one") << QVariant(QVariantMap());
    QTest::newRow("a text") << QVariant(QStringLiteral("track"));
    QTest::newRow("a number") << QVariant(3);
    QTest::newRow("texts") << QVariant(QStringList{QStringLiteral("xesam:title")});
    QTest::newRow("values") << QVariant(QVariantList{1, QStringLiteral("a")});
}

void MprisPropertiesTest::aTrackThatIsNoneLeavesTheRest()
{
    QFETCH(const QVariant, track);
    QCOMPARE(withPlayer({{QStringLiteral("Metadata"), track}}), MprisProperties{.status = Status::playing});
}

void MprisPropertiesTest::aPlayerDoesWhatItSays_data()
{
    QTest::addColumn<QString>("status");
    QTest::addColumn<QVariantMap>("said");
    QTest::addColumn<QList<bool>>("can");
    const auto row = [](const char *name, const char *status, const QVariantMap &said, const QList<bool> &can) {
        QTest::newRow(name) << QString::fromLatin1(status) << said << can;
    };
    const auto no = [](const char *name) { return QVariantMap{{QString::fromLatin1(name), false}}; };
    row("nothing said", "Playing", {}, {true, true, true});
    row("no control", "Playing", no("CanControl"), {false, false, false});
    row("no next", "Playing", no("CanGoNext"), {true, false, true});
    row("no previous", "Playing", no("CanGoPrevious"), {true, true, false});
    row("no pause", "Playing", no("CanPause"), {false, true, true});
    row("no pause needed", "Paused", no("CanPause"), {true, true, true});
    row("no play", "Paused", no("CanPlay"), {false, true, true});
    row("no play needed", "Playing", no("CanPlay"), {true, true, true});
    row("nonsense", "Playing",
        {{QStringLiteral("CanControl"), 0}, {QStringLiteral("CanGoNext"), QStringLiteral("false")},
            {QStringLiteral("CanGoPrevious"), QVariantMap()}, {QStringLiteral("CanPause"), 0.0}},
        {true, true, true});
}

void MprisPropertiesTest::aPlayerDoesWhatItSays()
{
    QFETCH(const QString, status);
    QFETCH(QVariantMap, said);
    QFETCH(const QList<bool>, can);
    said.insert(QStringLiteral("PlaybackStatus"), status);
    const MprisProperties properties = withPlayer(said);
    QCOMPARE((QList<bool>{properties.canPlayPause, properties.canGoNext, properties.canGoPrevious}), can);
}

void MprisPropertiesTest::thePlayerSaysWhoItIs()
{
    const QVariantMap root{{QStringLiteral("Identity"), QStringLiteral("A player")},
        {QStringLiteral("DesktopEntry"), QStringLiteral("org.a.player")}, {QStringLiteral("CanRaise"), true}};
    const MprisIdentity identity{
        .name = QStringLiteral("A player"), .desktopEntry = QStringLiteral("org.a.player"), .canRaise = true};
    QCOMPARE(moorline::mprisIdentity(root), identity);
}

void MprisPropertiesTest::damageInItIsFeltInThatAlone_data()
{
    QTest::addColumn<QVariant>("told");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("a number") << QVariant(1);
    QTest::newRow("texts") << QVariant(QStringList{QStringLiteral("true")});
    QTest::newRow("a map") << QVariant(QVariantMap{{QStringLiteral("a"), true}});
}

void MprisPropertiesTest::damageInItIsFeltInThatAlone()
{
    QFETCH(const QVariant, told);
    const QVariantMap root{
        {QStringLiteral("Identity"), told}, {QStringLiteral("DesktopEntry"), told}, {QStringLiteral("CanRaise"), told}};
    QCOMPARE(moorline::mprisIdentity(root), MprisIdentity());
}

MOORLINE_TEST(MprisPropertiesTest);

} // namespace

#include "MprisPropertiesTest.moc"

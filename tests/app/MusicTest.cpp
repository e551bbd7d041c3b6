#include "app/Program.h"

#include "app/Services.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "harness/TestCase.h"

#include <QGraphicsScene>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const PlayerReport track{.isPlaying = true,
    .trackId = QStringLiteral("1"),
    .title = QStringLiteral("Title"),
    .artist = QStringLiteral("Artist"),
    .album = QStringLiteral("Album"),
    .duration = 200,
    .position = 0,
    .artwork = QUrl(QStringLiteral("https://example.org/a.jpg"))};

PlayerReport paused()
{
    PlayerReport report = track;
    report.isPlaying = false;
    return report;
}

/// A program whose bar is of the clock and of music.
struct MusicProgram : Program {
    MusicProgram()
        : Program(plan(RunMode::normal))
    {
        platform.preferences.setDock(QStringLiteral("bottom"), true);
        change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock, WidgetKind::music}; });
        launch(*this);
    }

    template <typename Change>
    void change(Change apply)
    {
        delegate.store().change(apply);
    }
    /// Says it, and lets the service and the bar hear of it.
    void say(const PlayerReport &report)
    {
        platform.mediaPlayers.say(MusicSource::spotify, report);
        platform.clock.advance(2s);
    }
    [[nodiscard]] bool showsMusic() const
    {
        const auto &view = dynamic_cast<const DockHostingView &>(*delegate.windowController().panel()->content());
        return view.bar().row().contains(WidgetKind::music);
    }
};

} // namespace

/// Music in a running program.
class MusicTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isThereWhileSomethingPlays()
    {
        MusicProgram program;
        QVERIFY(!program.showsMusic());
        program.say(track);
        QVERIFY(program.showsMusic());
        program.platform.clock.advance(24h);
        QVERIFY(program.showsMusic());
    }

    void whatNeverPlayedIsNotShown()
    {
        MusicProgram program;
        program.say(paused());
        program.platform.clock.advance(1min);
        QVERIFY(!program.showsMusic());
    }

    void pausingForAMomentDoesNotHideIt()
    {
        MusicProgram program;
        program.say(track);
        program.say(paused());
        program.platform.clock.advance(4min);
        QVERIFY(program.showsMusic());
        program.say(track);
        program.say(paused());
        program.platform.clock.advance(4min);
        QVERIFY(program.showsMusic());
        program.platform.clock.advance(2min);
        QVERIFY(!program.showsMusic());
        program.say(track);
        QVERIFY(program.showsMusic());
    }

    void hidesAfterTheChosenTime_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::newRow("5") << 5;
        QTest::newRow("15") << 15;
        QTest::newRow("30") << 30;
    }

    void hidesAfterTheChosenTime()
    {
        QFETCH(const int, minutes);
        MusicProgram program;
        program.change([minutes](Settings &settings) { settings.musicIdleTimeoutMinutes = minutes; });
        program.say(track);
        program.platform.mediaPlayers.quit(MusicSource::spotify);
        program.platform.clock.advance(std::chrono::minutes(minutes) - 2s);
        QVERIFY(program.showsMusic());
        program.platform.clock.advance(4s);
        QVERIFY(!program.showsMusic());
    }

    void anotherTimeIsObeyed()
    {
        MusicProgram program;
        program.say(track);
        program.say(paused());
        program.platform.clock.advance(10min);
        QVERIFY(!program.showsMusic());
        program.change([](Settings &settings) { settings.musicIdleTimeoutMinutes = 15; });
        program.platform.clock.advance(2s);
        QVERIFY(program.showsMusic());
    }

    void staysWhereItIsToldNeverToHide()
    {
        MusicProgram program;
        program.change([](Settings &settings) { settings.hideMusicWhenIdle = false; });
        program.platform.clock.advance(2s);
        QVERIFY(program.showsMusic());
        program.platform.clock.advance(24h);
        QVERIFY(program.showsMusic());
        program.change([](Settings &settings) { settings.hideMusicWhenIdle = true; });
        program.platform.clock.advance(2s);
        QVERIFY(!program.showsMusic());
    }

    void theNetworkBringsTheArtworkThatItKept()
    {
        MusicProgram program;
        program.say(track);
        const auto asked = [&] {
            return program.platform.httpClient.requested.count(QUrl(QStringLiteral("https://example.org/a.jpg")));
        };
        QCOMPARE(asked(), 1);
        while (program.platform.httpClient.running() > 0)
            QVERIFY(program.platform.httpClient.fail());
        program.platform.network.change(false);
        program.platform.clock.advance(3s);
        QCOMPARE(asked(), 1);
        program.platform.network.change(true);
        program.platform.clock.advance(3s);
        QCOMPARE(asked(), 2);
    }

    void withoutTheWidgetNoArtworkIsFetched()
    {
        MusicProgram program;
        program.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
        program.say(track);
        program.platform.clock.advance(1min);
        QVERIFY(!program.platform.httpClient.requested.contains(QUrl(QStringLiteral("https://example.org/a.jpg"))));
    }

    void anImportAsksNoPlayer()
    {
        Program program(plan(RunMode::importDock));
        program.platform.mediaPlayers.say(MusicSource::music, track);
        launch(program);
        program.platform.clock.advance(1min);
        QVERIFY(program.platform.mediaPlayers.queried.isEmpty());
    }

    void wherePlatformsHaveNoPlayersTheBodyHas()
    {
        FakePlatform platform;
        FakeMediaPlayers scripted;
        QVERIFY(&mediaPlayers(platform.ports, scripted) == &platform.mediaPlayers);
        platform.ports.mediaPlayers.reset();
        QVERIFY(&mediaPlayers(platform.ports, scripted) == &scripted);
    }
};

MOORLINE_TEST(MusicTest);
#include "MusicTest.moc"

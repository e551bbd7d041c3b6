#include "MprisTestCase.h"
#include "ToneFile.h"
#include "fakes/FakeHttpClient.h"
#include "music/Covers.h"
#include "platform/qt/QtPictures.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

/// mpv, with its MPRIS plug-in, as it is installed.
class RealPlayerTest final : public MprisTestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        MprisTestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        begin();
    }

    void cleanup()
    {
        m_mpv.kill();
        m_mpv.waitForFinished();
        MprisTestCase::cleanup();
    }

    void whatItPlaysIsReported()
    {
        play();
        const auto told = report();
        QVERIFY(told);
        QVERIFY(told->isPlaying);
        QCOMPARE(told->title, QStringLiteral("First tone"));
        QCOMPARE(told->artist, QStringLiteral("A generator"));
        QCOMPARE(told->album, QStringLiteral("Tones"));
        QCOMPARE(told->duration, 60.0);
        QVERIFY(told->canPlayPause);
        QVERIFY(told->canGoNext);
        // Older ones tell of the file beside it, later ones of the picture in it.
        QVERIFY(told->artwork);
        if (told->artwork->scheme() == QLatin1StringView("file"))
            QCOMPARE(told->artwork->toLocalFile(), path(QStringLiteral("cover.png")));
        else
            QVERIFY(told->artwork->toString().startsWith(QLatin1StringView("data:image/png;base64,")));

        QtPictures pictures;
        FakeHttpClient client;
        Covers covers({.pictures = pictures, .client = client, .clock = *m_clock});
        QTRY_VERIFY(!covers.picture(told->trackId, *told->artwork).isNull());
        QCOMPARE(covers.picture(told->trackId, *told->artwork).pixelColor(69, 69), QColor(Qt::red));
    }

    void itGoesOnFromWhereItIs()
    {
        play();
        const double before = report()->position;
        QTRY_VERIFY(report()->position > before);
        QVERIFY(report()->position < 30);
    }

    void itPausesAndPlays()
    {
        play();
        m_players->send(MusicSource::music, MusicCommand::playPause);
        QTRY_VERIFY(!gatheredReport()->isPlaying);
        m_players->send(MusicSource::music, MusicCommand::playPause);
        QTRY_VERIFY(gatheredReport()->isPlaying);
    }

    void theNextTrackIsAnother()
    {
        play();
        const QString first = report()->trackId;
        m_players->send(MusicSource::music, MusicCommand::next);
        QTRY_COMPARE(gatheredReport()->title, QStringLiteral("Second tone"));
        QVERIFY(report()->trackId != first);
        m_players->send(MusicSource::music, MusicCommand::previous);
        QTRY_COMPARE(gatheredReport()->title, QStringLiteral("First tone"));
        QCOMPARE(report()->trackId, first);
    }

    void oneThatIsKilledIsGone()
    {
        play();
        m_changes->clear();
        m_mpv.kill();
        QTRY_VERIFY(!m_players->isRunning(MusicSource::music));
        QCOMPARE(m_changes->size(), 1);
        QVERIFY(!report());
    }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    /// Two tones of a minute, without a sound and without a window.
    void play()
    {
        QImage image(32, 32, QImage::Format_RGB32);
        image.fill(Qt::red);
        QBuffer picture;
        picture.open(QIODevice::WriteOnly);
        QVERIFY(image.save(&picture, "png"));
        const auto tone = [&picture](const QString &name) {
            return toneFile(60,
                {.title = name,
                    .artist = QStringLiteral("A generator"),
                    .album = QStringLiteral("Tones"),
                    .picture = picture.data()});
        };
        write(QStringLiteral("cover.png"), picture.data());
        write(QStringLiteral("1.wav"), tone(QStringLiteral("First tone")));
        write(QStringLiteral("2.wav"), tone(QStringLiteral("Second tone")));

        const QString program = QStandardPaths::findExecutable(QStringLiteral("mpv"));
        QVERIFY2(!program.isEmpty(), "mpv is not installed");
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLocal8Bit(m_daemon->address()));
        // The user's own configuration is none of this test's business; the plug-in is in the machine's.
        environment.insert(QStringLiteral("HOME"), m_folder->path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
        m_mpv.setProcessEnvironment(environment);
        m_mpv.setStandardOutputFile(QProcess::nullDevice());
        m_mpv.start(program,
            {QStringLiteral("--ao=null"), QStringLiteral("--vo=null"), QStringLiteral("--no-terminal"),
                path(QStringLiteral("1.wav")), path(QStringLiteral("2.wav"))});
        QVERIFY(m_mpv.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(m_players->isRunning(MusicSource::music), 30'000);
        QTRY_COMPARE_WITH_TIMEOUT(gatheredTitle(), QStringLiteral("First tone"), 30'000);
    }

    /// After what it told has been asked for.
    [[nodiscard]] std::optional<PlayerReport> gatheredReport()
    {
        gather();
        return report();
    }
    [[nodiscard]] QString gatheredTitle()
    {
        gather();
        return shown();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QProcess m_mpv;
};

MOORLINE_TEST(RealPlayerTest);

#include "RealPlayerTest.moc"

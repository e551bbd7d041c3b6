#include "freedesktop/MprisPosition.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// What is told of a track of a hundred seconds.
MprisPosition::Told polled(double position, bool isPlaying = true, const QString &track = QStringLiteral("a"))
{
    return {.isPlaying = isPlaying, .track = track, .position = position, .duration = 100};
}

} // namespace

class MprisPositionTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPositionThatMovesIsBelieved()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(10), 0ms), 10.0);
        QCOMPARE(position.correct(polled(12.1), 2s), 12.1);
        // Also back, as after a seek.
        QCOMPARE(position.correct(polled(3), 4s), 3.0);
    }

    void theSamePositionTwiceRunsOn()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(10), 0ms), 10.0);
        QCOMPARE(position.correct(polled(10), 2s), 12.0);
        QCOMPARE(position.correct(polled(10), 4500ms), 14.5);
        QCOMPARE(position.correct(polled(30), 6s), 30.0);
    }

    void itRunsNoFurtherThanTheTrack()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(97), 0ms), 97.0);
        QCOMPARE(position.correct(polled(97), 2s), 99.0);
        QCOMPARE(position.correct(polled(97), 4s), 100.0);
        MprisPosition::Told endless = polled(97);
        endless.duration = 0;
        QCOMPARE(position.correct(endless, 14s), 110.0);
    }

    void pausedItStays()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(10, false), 0ms), 10.0);
        QCOMPARE(position.correct(polled(10, false), 2s), 10.0);
        // It may have begun to play just now.
        QCOMPARE(position.correct(polled(10), 4s), 10.0);
        QCOMPARE(position.correct(polled(10), 6s), 12.0);
    }

    void aPauseWhereItWasIsBelieved()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(10), 0ms), 10.0);
        QCOMPARE(position.correct(polled(10, false), 2s), 10.0);
    }

    void whoWasCaughtIsNotBelievedInAPause()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(0), 0ms), 0.0);
        QCOMPARE(position.correct(polled(0), 20s), 20.0);
        QCOMPARE(position.correct(polled(0, false), 22s), 22.0);
        QCOMPARE(position.correct(polled(0, false), 60s), 22.0);
        QCOMPARE(position.correct(polled(0), 62s), 22.0);
        QCOMPARE(position.correct(polled(0), 64s), 24.0);
        QCOMPARE(position.correct(polled(25), 66s), 25.0);
        QCOMPARE(position.correct(polled(25, false), 68s), 25.0);
    }

    void aNewTrackStartsAtItsBeginning()
    {
        MprisPosition position;
        QCOMPARE(position.correct(polled(40), 0ms), 40.0);
        QCOMPARE(position.correct(polled(40, true, QStringLiteral("b")), 2s), 0.0);
        QCOMPARE(position.correct(polled(40, true, QStringLiteral("b")), 4s), 2.0);
        // Unless its player knows better.
        QCOMPARE(position.correct(polled(7, true, QStringLiteral("c")), 6s), 7.0);
    }

    void aLeapCountsThoughThePlayerTellsTheSame()
    {
        MprisPosition position;
        position.seek(70, 0ms);
        QCOMPARE(position.correct(polled(10), 0ms), 10.0);
        position.seek(40, 1s);
        QCOMPARE(position.correct(polled(10), 2s), 41.0);
        QCOMPARE(position.correct(polled(10), 4s), 43.0);
        position.seek(5, 5s);
        QCOMPARE(position.correct(polled(10, false), 6s), 6.0);
        // Who tells of it in both ways is believed.
        position.seek(60, 7s);
        QCOMPARE(position.correct(polled(60.5), 8s), 60.5);
        QCOMPARE(position.correct(polled(62.5), 10s), 62.5);
    }

    void theLastThatWasToldIsKept()
    {
        MprisPosition position;
        const QString track = polled(0).track;
        QCOMPARE(position.lastTold(track), 0.0);
        static_cast<void>(position.correct(polled(10), 0ms));
        static_cast<void>(position.correct(polled(10), 2s));
        QCOMPARE(position.lastTold(track), 10.0);
        QCOMPARE(position.lastTold(QStringLiteral("another")), 0.0);
    }

    void whoFellSilentIsNotAskedUntilItTellsOfAChange()
    {
        MprisPosition position;
        QVERIFY(!position.isSilent());
        position.noteSilence();
        QVERIFY(position.isSilent());
        QCOMPARE(position.correct(polled(position.lastTold(polled(0).track)), 0ms), 0.0);
        QCOMPARE(position.correct(polled(position.lastTold(polled(0).track)), 2s), 2.0);
        QVERIFY(position.isSilent());
        position.noteChange();
        QVERIFY(!position.isSilent());
    }

    void silenceIsWhereNobodyAnswers_data()
    {
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("isSilence");
        const auto row = [](const char *error, bool isSilence) {
            QTest::newRow(error) << QString::fromLatin1(error) << isSilence;
        };
        row("", false);
        row("org.freedesktop.DBus.Error.NoReply", true);
        row("org.freedesktop.DBus.Error.Disconnected", true);
        row("org.freedesktop.DBus.Error.ServiceUnknown", true);
        row("org.freedesktop.DBus.Error.NameHasNoOwner", true);
        row("org.freedesktop.DBus.Error.UnknownProperty", false);
        row("org.freedesktop.DBus.Error.AccessDenied", false);
        row("org.freedesktop.DBus.Error.NoReplyAtAll", false);
        row("org.example.DBus.Error.NoReply", false);
        row("NoReply", false);
    }
    void silenceIsWhereNobodyAnswers()
    {
        QFETCH(const QString, error);
        QFETCH(const bool, isSilence);
        QCOMPARE(isMprisSilence(error), isSilence);
    }
};

MOORLINE_TEST(MprisPositionTest);
#include "MprisPositionTest.moc"

#include "music/Covers.h"

#include "fakes/FakeClock.h"
#include "fakes/FakeHttpClient.h"
#include "fakes/FakePictures.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString one = QStringLiteral("one");
const QString two = QStringLiteral("two");
const QUrl file(QStringLiteral("file:///tmp/a.png"));
const QUrl address(QStringLiteral("https://example.org/a.jpg"));

struct Fixture {
    FakeClock clock;
    FakePictures pictures;
    FakeHttpClient client;
    Covers covers{{.pictures = pictures, .client = client, .clock = clock}};
    QSignalSpy changes{&covers, &Covers::changed};

    bool isThere(const QString &track, const QUrl &url) { return !covers.picture(track, url).isNull(); }
    bool answer(const QColor &color = Qt::red) { return pictures.answer(FakePictures::plain(color)); }
    [[nodiscard]] static HttpAnswer ok(const QByteArray &body) { return {std::nullopt, 200, body}; }
};

} // namespace

class CoversTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aFileIsRead()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, file));
        QCOMPARE(fixture.pictures.requested.size(), 1);
        QCOMPARE(fixture.pictures.requested.first().path, QStringLiteral("/tmp/a.png"));
        QCOMPARE(fixture.pictures.requested.first().side, 138);
        QCOMPARE(fixture.changes.size(), 0);
        QVERIFY(fixture.answer());
        QCOMPARE(fixture.changes.size(), 1);
        QCOMPARE(fixture.covers.picture(one, file).pixelColor(0, 0), QColor(Qt::red));
    }

    void isReadOnceThoughItIsAskedForOften()
    {
        Fixture fixture;
        for (int i = 0; i < 3; ++i)
            QVERIFY(!fixture.isThere(one, file));
        QVERIFY(fixture.answer());
        for (int i = 0; i < 3; ++i)
            QVERIFY(fixture.isThere(one, file));
        fixture.clock.advance(1h);
        QVERIFY(fixture.isThere(one, file));
        QCOMPARE(fixture.pictures.requested.size(), 1);
    }

    void anotherTrackInTheSameFileIsAnotherPicture()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, file));
        QVERIFY(fixture.answer(Qt::red));
        QVERIFY(!fixture.isThere(two, file));
        QVERIFY(fixture.answer(Qt::blue));
        QCOMPARE(fixture.covers.picture(one, file).pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(fixture.covers.picture(two, file).pixelColor(0, 0), QColor(Qt::blue));
        QVERIFY(!fixture.isThere(two, address));
    }

    void aTrackAndItsAddressAreNotMistakenForOthers()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(QStringLiteral("a"), QUrl(QStringLiteral("file:///b"))));
        QVERIFY(fixture.answer());
        QVERIFY(!fixture.isThere(QStringLiteral("afile:///b"), QUrl()));
        QVERIFY(!fixture.isThere(QString(), QUrl(QStringLiteral("afile:///b"))));
    }

    void anAddressIsFetchedAndDecoded()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, address));
        QCOMPARE(fixture.client.requested, QList{address});
        QCOMPARE(fixture.client.largestBodies, QList<qint64>{10485760});
        QVERIFY(fixture.client.answer(Fixture::ok("picture")));
        QVERIFY(!fixture.isThere(one, address));
        QCOMPARE(fixture.pictures.requested.size(), 1);
        QCOMPARE(fixture.pictures.requested.first().data, QByteArray("picture"));
        QCOMPARE(fixture.pictures.requested.first().side, 138);
        QVERIFY(fixture.answer());
        QVERIFY(fixture.isThere(one, address));
        QCOMPARE(fixture.client.requested.size(), 1);
        QCOMPARE(fixture.changes.size(), 1);
    }

    void whatTheAddressHoldsIsDecoded()
    {
        Fixture fixture;
        const QUrl url(QStringLiteral("data:image/png;base64,QUJD"));
        QVERIFY(!fixture.isThere(one, url));
        QCOMPARE(fixture.pictures.requested.size(), 1);
        QCOMPARE(fixture.pictures.requested.first().base64, QByteArray("QUJD"));
        QVERIFY(fixture.answer());
        QVERIFY(fixture.isThere(one, url));
    }

    void otherAddressesAreNotLookedFor()
    {
        Fixture fixture;
        for (const char *url : {"ftp://example.org/a", "qrc:/a", "a", "data:image/svg+xml;base64,QUJD"})
            QVERIFY(!fixture.isThere(one, QUrl(QString::fromLatin1(url))));
        QVERIFY(fixture.client.requested.isEmpty());
        QVERIFY(fixture.pictures.requested.isEmpty());
        QCOMPARE(fixture.clock.runningTimers(), 0);
    }

    void whatFailsWaitsAMinute_data()
    {
        QTest::addColumn<bool>("isDownload");
        QTest::addColumn<HttpAnswer>("answer");
        QTest::newRow("no picture in the address") << false << HttpAnswer();
        QTest::newRow("no picture at the address") << true << Fixture::ok("text");
        QTest::newRow("no network") << true << HttpAnswer{QStringLiteral("offline"), 0, {}};
        QTest::newRow("not found") << true << HttpAnswer{std::nullopt, 404, "picture"};
        QTest::newRow("moved") << true << HttpAnswer{std::nullopt, 304, {}};
    }

    void whatFailsWaitsAMinute()
    {
        QFETCH(const bool, isDownload);
        QFETCH(const HttpAnswer, answer);
        Fixture fixture;
        const QUrl url = isDownload ? address : QUrl(QStringLiteral("data:image/png;base64,QUJD"));
        const auto looks = [&] {
            return isDownload ? fixture.client.requested.size() : fixture.pictures.requested.size();
        };
        const auto fail = [&] {
            if (isDownload)
                fixture.client.answer(answer);
            fixture.pictures.miss();
        };
        QVERIFY(!fixture.isThere(one, url));
        fail();
        QCOMPARE(fixture.changes.size(), 0);
        for (int second = 2; second < 60; second += 2) {
            fixture.clock.advance(2s);
            QVERIFY(!fixture.isThere(one, url));
        }
        fixture.clock.advance(1999ms);
        QVERIFY(!fixture.isThere(one, url));
        QCOMPARE(looks(), 1);
        QCOMPARE(fixture.changes.size(), 0);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.changes.size(), 1);
        QVERIFY(!fixture.isThere(one, url));
        QCOMPARE(looks(), 2);
        fail();
        fixture.clock.advance(1min);
        QCOMPARE(fixture.changes.size(), 2);
        // Nobody asks any more.
        fixture.clock.advance(1h);
        QCOMPARE(fixture.changes.size(), 2);
        QCOMPARE(looks(), 2);
    }

    /// A player may tell of a file that it is still writing.
    void aFileIsSoonLookedForAgain()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, file));
        for (int look = 1; look <= 3; ++look) {
            QCOMPARE(fixture.pictures.requested.size(), look);
            QVERIFY(fixture.pictures.miss());
            fixture.clock.advance(1999ms);
            QVERIFY(!fixture.isThere(one, file));
            QCOMPARE(fixture.changes.size(), look - 1);
            fixture.clock.advance(1ms);
            QCOMPARE(fixture.changes.size(), look);
            QVERIFY(!fixture.isThere(one, file));
        }
        QVERIFY(fixture.pictures.miss());
        fixture.clock.advance(59999ms);
        QCOMPARE(fixture.changes.size(), 3);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.changes.size(), 4);
        // That of another track is another file for all that is known.
        QVERIFY(!fixture.isThere(two, file));
        QVERIFY(fixture.pictures.miss());
        fixture.clock.advance(2s);
        QCOMPARE(fixture.changes.size(), 5);
    }

    void aLookThatHangsIsGivenUp_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::newRow("a file") << file;
        QTest::newRow("an address") << address;
    }

    void aLookThatHangsIsGivenUp()
    {
        QFETCH(const QUrl, url);
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, url));
        fixture.clock.advance(19999ms);
        QCOMPARE(fixture.pictures.running() + fixture.client.running(), 1);
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.pictures.running() + fixture.client.running(), 0);
        fixture.clock.advance(1min);
        QVERIFY(!fixture.changes.isEmpty());
        QVERIFY(!fixture.isThere(one, url));
        QCOMPARE(fixture.pictures.running() + fixture.client.running(), 1);
    }

    void theNetworkThatComesBackUnderADownloadEndsItsWait()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, address));
        fixture.covers.tryAgain();
        QVERIFY(fixture.client.fail());
        fixture.clock.advance(1ms);
        QCOMPARE(fixture.changes.size(), 1);
        QVERIFY(!fixture.isThere(one, address));
        QVERIFY(fixture.client.fail());
        // Once.
        fixture.clock.advance(59s);
        QCOMPARE(fixture.changes.size(), 1);
    }

    void anotherTrackDoesNotShortenTheWait()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, address));
        QVERIFY(fixture.client.fail());
        fixture.clock.advance(20s);
        QVERIFY(!fixture.isThere(two, file));
        QVERIFY(fixture.answer());
        fixture.clock.advance(20s);
        QVERIFY(!fixture.isThere(one, address));
        QCOMPARE(fixture.client.requested.size(), 1);
        const qsizetype before = fixture.changes.size();
        fixture.clock.advance(20s);
        QCOMPARE(fixture.changes.size(), before + 1);
        QVERIFY(!fixture.isThere(one, address));
        QCOMPARE(fixture.client.requested.size(), 2);
    }

    void theNetworkEndsTheWait()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, address));
        QVERIFY(fixture.client.fail());
        fixture.clock.advance(10s);
        fixture.covers.tryAgain();
        QCOMPARE(fixture.changes.size(), 1);
        QVERIFY(!fixture.isThere(one, address));
        QCOMPARE(fixture.client.requested.size(), 2);
    }

    void theNetworkIsNoNewsForWhatIsThere()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, address));
        fixture.covers.tryAgain();
        QVERIFY(fixture.client.answer(Fixture::ok("picture")));
        QVERIFY(fixture.answer());
        fixture.covers.tryAgain();
        QCOMPARE(fixture.changes.size(), 1);
        QCOMPARE(fixture.client.requested.size(), 1);
    }

    void whatIsNotWantedAnyMoreIsGivenUp()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, address));
        QVERIFY(!fixture.isThere(two, file));
        QCOMPARE(fixture.client.running(), 0);
        QVERIFY(!fixture.isThere(one, address));
        QCOMPARE(fixture.pictures.running(), 0);
        QVERIFY(fixture.client.answer(Fixture::ok("picture")));
        QVERIFY(!fixture.isThere(two, file));
        QCOMPARE(fixture.pictures.running(), 1);
        QVERIFY(fixture.answer());
        QVERIFY(fixture.isThere(two, file));
    }

    void remembersNoMoreThanItMay()
    {
        Fixture fixture;
        QCOMPARE(Covers::capacity, 8388608);
        for (int i = 0; i < 200; ++i) {
            QVERIFY(!fixture.isThere(QString::number(i), file));
            QVERIFY(fixture.answer());
            QVERIFY(fixture.isThere(QString::number(i), file));
            QVERIFY(fixture.covers.bytes() <= 8388608);
        }
        QVERIFY(fixture.covers.bytes() > 8000000);
        QVERIFY(!fixture.isThere(QStringLiteral("0"), file));
    }

    void aPictureThatIsTooLargeIsNone()
    {
        Fixture fixture;
        QVERIFY(!fixture.isThere(one, file));
        QVERIFY(fixture.pictures.answer(FakePictures::plain(Qt::red, {138, 20000})));
        QVERIFY(!fixture.isThere(one, file));
        QCOMPARE(fixture.pictures.requested.size(), 1);
        QCOMPARE(fixture.changes.size(), 0);
    }

    void mayEndWhileItLooks()
    {
        FakeClock clock;
        FakePictures pictures;
        FakeHttpClient client;
        auto covers = std::make_unique<Covers>(Covers::Context{pictures, client, clock});
        QVERIFY(covers->picture(one, address).isNull());
        QVERIFY(client.answer(Fixture::ok("picture")));
        covers.reset();
        QCOMPARE(pictures.running(), 0);
        QCOMPARE(clock.runningTimers(), 0);
    }
};

MOORLINE_TEST(CoversTest);
#include "CoversTest.moc"

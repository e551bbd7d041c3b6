#include "platform/qt/QtHttpClient.h"

#include "HttpTestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QByteArray json = QByteArrayLiteral("{\"temperature\": 21.5}");
const QByteArray isJson = QByteArrayLiteral("Content-Type: application/json; charset=utf-8");
const QByteArray chunked = QByteArrayLiteral("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");

/// Lower case, as header names are compared.
bool hasHeader(const QByteArray &head, const QByteArray &line)
{
    return head.toLower().contains("\r\n" + line.toLower());
}

HttpAnswer whole(int status, const QByteArray &body)
{
    return {.failure = std::nullopt, .status = status, .body = body};
}

} // namespace

class QtHttpClientTest final : public HttpTestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        HttpTestCase::init();
        m_server = std::make_unique<HttpServer>();
    }

    void cleanup()
    {
        HttpTestCase::cleanup();
        m_server.reset();
    }

    void givesTheAnswerOnTheMainThread()
    {
        m_server->on("/", sends(httpAnswer("200 OK", json, {isJson})));
        QCOMPARE(answerTo(m_server->url()), whole(200, json));
        QVERIFY(m_cameFromMainThread);
        QVERIFY(m_request);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void answersOnceAndNeverFromWithinTheCall()
    {
        m_server->on("/", sends(httpAnswer("200 OK", json)));
        m_request = get(m_server->url());
        QVERIFY(m_answers.isEmpty());
        QTRY_COMPARE(m_answers.size(), 1);
        m_clock->advance(1min);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(m_answers.size(), 1);
    }

    void saysWhoAsksAndForWhat()
    {
        m_server->on("/", sends(httpAnswer("200 OK", json)));
        QCOMPARE(answerTo(m_server->url()).status, 200);
        const QByteArray head = m_server->requests().constFirst();
        QVERIFY2(hasHeader(head, "User-Agent: Moorline/1.2.3\r\n"), head.constData());
        QVERIFY2(hasHeader(head, "Accept: application/json, */*;q=0.5\r\n"), head.constData());
    }

    void sendsNothingBackThatAServerGaveIt()
    {
        m_server->on("/", sends(httpAnswer("200 OK", json, {"Set-Cookie: id=1; Path=/", "ETag: \"1\""})));
        QCOMPARE(answerTo(m_server->url()).status, 200);
        QCOMPARE(answerTo(m_server->url()).status, 200);
        QCOMPARE(m_server->requests().size(), 2);
        const QByteArray head = m_server->requests().constLast();
        QVERIFY2(!hasHeader(head, "Cookie:"), head.constData());
        QVERIFY2(!hasHeader(head, "If-"), head.constData());
    }

    void asksTheServerEachTime()
    {
        m_server->on("/", sends(httpAnswer("200 OK", json, {"Cache-Control: max-age=3600"})));
        QCOMPARE(answerTo(m_server->url()).status, 200);
        QCOMPARE(answerTo(m_server->url()).body, json);
        QCOMPARE(m_server->requests().size(), 2);
    }

    void keepsTheCredentialsOfAnAddressToItself()
    {
        m_server->on("/", sends(httpAnswer("401 Unauthorized", json, {"WWW-Authenticate: Basic realm=\"here\""})));
        QUrl url = m_server->url();
        url.setUserName(QStringLiteral("user"));
        url.setPassword(QStringLiteral("secret"));
        QCOMPARE(answerTo(url).status, 401);
        QCOMPARE(m_server->requests().size(), 1);
        QVERIFY(!hasHeader(m_server->requests().constFirst(), "Authorization:"));
    }

    void keepsTheOrderOfTheQueryAndEncodesItOnce()
    {
        m_server->on("/forecast", sends(httpAnswer("200 OK", json)));
        QUrl url = m_server->url(QStringLiteral("/forecast"));
        url.setQuery(QStringLiteral("z=1&a=Europe%2FBerlin&m=50%25&b=%C3%A4 x"));
        QCOMPARE(answerTo(url).status, 200);
        const QByteArray line = m_server->requests().constFirst().split('\r').constFirst();
        QCOMPARE(line, QByteArray("GET /forecast?z=1&a=Europe%2FBerlin&m=50%25&b=%C3%A4%20x HTTP/1.1"));
    }

    void takesTheBodyWhateverItIsDeclaredToBe()
    {
        for (const QByteArray &type :
            {QByteArray("text/html"), QByteArray("image/png"), QByteArray("text/plain; charset=latin1")}) {
            const QByteArray length = QByteArray::number(json.size());
            m_server->on("/",
                sends(
                    "HTTP/1.1 200 OK\r\nContent-Type: " + type + "\r\nContent-Length: " + length + "\r\n\r\n" + json));
            QCOMPARE(answerTo(m_server->url()), whole(200, json));
        }
    }

    void givesAnswersOfEveryStatus_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        const auto row = [](const QByteArray &line, const QByteArray &body) {
            QTest::newRow(line.constData()) << httpAnswer(line, body) << line.left(3).toInt() << body;
        };
        row("200 OK", {});
        row("302 Found", "nowhere to go");
        row("400 Bad Request", "{}");
        row("401 Unauthorized", "{}");
        row("403 Forbidden", "{}");
        row("404 Not Found", "{}");
        row("418 Teapot", "{}");
        row("429 Too Many Requests", "{\"reason\": \"slow down\"}");
        row("451 Unavailable", "{}");
        row("500 Internal Server Error", "{\"error\": true}");
        row("503 Service Unavailable", "{}");
        row("599 What", "{}");
        QTest::newRow("204 No Content") << QByteArray("HTTP/1.1 204 No Content\r\n\r\n") << 204 << QByteArray();
    }

    void givesAnswersOfEveryStatus()
    {
        QFETCH(QByteArray, sent);
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        m_server->on("/", sends(sent));
        QCOMPARE(answerTo(m_server->url()), whole(status, body));
    }

    void understandsEveryWayToDelimitABody_data()
    {
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("chunks") << chunked + "5\r\n{\"tem\r\n10\r\nperature\": 21.5}\r\n0\r\n\r\n";
        QTest::newRow("the end of the connection") << "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + json;
        QTest::newRow("HTTP/1.0") << "HTTP/1.0 200 OK\r\n\r\n" + json;
        QTest::newRow("an interim answer") << "HTTP/1.1 100 Continue\r\n\r\n" + httpAnswer("200 OK", json);
        // More than was announced belongs to no answer.
        QTest::newRow("bytes after the end") << httpAnswer("200 OK", json) + "and more";
    }

    void understandsEveryWayToDelimitABody()
    {
        QFETCH(QByteArray, sent);
        m_server->on("/", sendsAndCloses(sent));
        QCOMPARE(answerTo(m_server->url()), whole(200, json));
    }

    void failsWhenThereIsNoWholeAnswer_data()
    {
        QTest::addColumn<HttpServer::Behavior>("behavior");
        QTest::newRow("a reset") << resets();
        QTest::newRow("closed without a word") << sendsAndCloses({});
        QTest::newRow("cut off in the head") << sendsAndCloses("HTTP/1.1 200 OK\r\nContent-Le");
        QTest::newRow("cut off in the body") << sendsAndCloses("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{}");
        QTest::newRow("cut off before the body") << sendsAndCloses("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
        QTest::newRow("cut off in an error") << sendsAndCloses("HTTP/1.1 500 Oh\r\nContent-Length: 1000\r\n\r\n{}");
        QTest::newRow("cut off in a chunk") << sendsAndCloses(chunked + "100\r\n{");
        QTest::newRow("cut off between chunks") << sendsAndCloses(chunked + "2\r\n{}\r\n");
        QTest::newRow("garbage") << sendsAndCloses("\x16\x03\x01\x02 no HTTP at all\r\n\r\n");
        QTest::newRow("HTTP/0.9") << sendsAndCloses(json);
        QTest::newRow("a page that is no HTTP") << sendsAndCloses("<html><body>Log in here</body></html>");
    }

    void failsWhenThereIsNoWholeAnswer()
    {
        QFETCH(HttpServer::Behavior, behavior);
        m_server->on("/", behavior);
        const HttpAnswer answer = answerTo(m_server->url());
        QVERIFY2(answer.failure, answer.body.constData());
        QVERIFY(!answer.failure->isEmpty());
        QVERIFY(answer.body.isEmpty());
    }

    void takesAChunkWithoutASizeForTheEnd_data()
    {
        QTest::addColumn<QByteArray>("chunk");
        QTest::newRow("no number") << QByteArray("zz\r\n{}\r\n0\r\n\r\n");
        QTest::newRow("negative") << QByteArray("-2\r\n{}\r\n0\r\n\r\n");
        QTest::newRow("larger than any number") << QByteArray("fffffffffffffffffffff\r\n{}\r\n0\r\n\r\n");
    }

    /// That is how Qt reads it; whoever needs the whole answer sees that it is cut off.
    void takesAChunkWithoutASizeForTheEnd()
    {
        QFETCH(QByteArray, chunk);
        m_server->on("/", sends(chunked + "9\r\n{\"temper\"\r\n" + chunk));
        QCOMPARE(answerTo(m_server->url()), whole(200, "{\"temper\""));
    }

    void givesUpAfterTwelveSeconds_data()
    {
        QTest::addColumn<QByteArray>("beginning");
        QTest::newRow("never a word") << QByteArray();
        QTest::newRow("half a head") << QByteArray("HTTP/1.1 200 OK\r\nContent-");
        QTest::newRow("silent after the head") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n");
        QTest::newRow("a body that never ends") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{}");
        QTest::newRow("a chunk that never ends") << chunked + "ffffffff\r\n{}";
    }

    void givesUpAfterTwelveSeconds()
    {
        QFETCH(QByteArray, beginning);
        m_server->on("/", sends(beginning));
        m_request = get(m_server->url());
        QTRY_COMPARE(m_server->requests().size(), 1);
        m_clock->advance(12s);
        QCOMPARE(m_answers.size(), 1);
        QCOMPARE(m_answers.first().failure, QStringLiteral("The request timed out."));
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(m_answers.size(), 1);
    }

    void waitsNearlyTwelveSeconds()
    {
        QTcpSocket *connection = nullptr;
        m_server->on("/", [&connection](QTcpSocket &socket) { connection = &socket; });
        m_request = get(m_server->url());
        QTRY_VERIFY(connection);
        m_clock->advance(11'999ms);
        connection->write(httpAnswer("200 OK", json));
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(m_answers.first(), whole(200, json));
    }

    void givesUpAfterTwelveSecondsOfDripping()
    {
        qint64 sent = 0;
        m_server->on("/", drips("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n", sent));
        m_request = get(m_server->url());
        for (int second = 0; second < 12; ++second) {
            QCOMPARE(m_answers.size(), 0);
            const qint64 before = sent;
            QTRY_VERIFY(sent >= before + 3);
            m_clock->advance(1s);
        }
        QCOMPARE(m_answers.size(), 1);
        QCOMPARE(m_answers.first().failure, QStringLiteral("The request timed out."));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

private:
    std::unique_ptr<HttpServer> m_server;
};

MOORLINE_TEST(QtHttpClientTest);

#include "QtHttpClientTest.moc"

#include "HttpTestCase.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QNetworkProxy>
#include <QSemaphore>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QByteArray answer = httpAnswer("200 OK", "{}");

// A busy machine takes a while for everything. Still this is far from the twelve seconds that a request may take, and
// from a wait for a server that stays silent.
constexpr qint64 promptly = 3000;

/// Those that make requests. Qt keeps the ones that look names up for a while.
int requestThreads()
{
    int count = 0;
    QDirIterator threads(QStringLiteral("/proc/self/task"), QDir::Dirs | QDir::NoDotAndDotDot);
    while (threads.hasNext()) {
        QFile name(threads.next() + QStringLiteral("/comm"));
        const QByteArray text = name.open(QIODevice::ReadOnly) ? name.readAll() : QByteArray();
        count += text.startsWith("http") || text.startsWith("QNetworkAccess") ? 1 : 0;
    }
    return count;
}

/// A look-up that ends when it may, as one that waits for a server that is not there.
class StuckProxies final : public QNetworkProxyFactory {
public:
    StuckProxies(QSemaphore &entered, QSemaphore &mayEnd)
        : m_entered(entered)
        , m_mayEnd(mayEnd)
    {
    }

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &) override
    {
        m_entered.release();
        m_mayEnd.acquire();
        return {QNetworkProxy(QNetworkProxy::NoProxy)};
    }

private:
    QSemaphore &m_entered;
    QSemaphore &m_mayEnd;
};

} // namespace

class HttpLifetimeTest final : public HttpTestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        HttpTestCase::init();
        m_server = std::make_unique<HttpServer>();
        m_server->on("/", sends(answer));
        m_server->on("/silent", sends({}));
    }

    void cleanup()
    {
        HttpTestCase::cleanup();
        m_server.reset();
    }

    void startsNoThreadBeforeTheFirstRequest() { QTRY_COMPARE(requestThreads(), 0); }

    void leavesOneIdleThreadWhenNothingIsUnderWay()
    {
        QCOMPARE(answerTo(m_server->url()).status, 200);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QTRY_COMPARE(requestThreads(), 1);
        QVERIFY(m_request);
    }

    void staysSilentWhenGivenUpAtOnce()
    {
        m_request = get(m_server->url());
        m_request.reset();
        QCOMPARE(m_clock->runningTimers(), 0);
        // Another one is answered after it would have been.
        QCOMPARE(answerTo(m_server->url()).status, 200);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(m_answers.size(), 1);
    }

    void closesTheConnectionWhenGivenUp()
    {
        m_request = get(m_server->url(QStringLiteral("/silent")));
        QTRY_COMPARE(m_server->requests().size(), 1);
        m_request.reset();
        QTRY_COMPARE(m_server->openConnections(), 0);
        QVERIFY(m_answers.isEmpty());
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void staysSilentWhenGivenUpWhileTheAnswerIsOnItsWay()
    {
        m_server->on("/", [this](QTcpSocket &socket) {
            socket.write(answer);
            // The other side closes when it has the answer; it has not been given out here by then.
            QVERIFY(socket.waitForDisconnected());
            QVERIFY(m_request);
            m_request.reset();
        });
        m_request = get(m_server->url());
        QTRY_VERIFY(!m_request);
        m_server->on("/", sends(answer));
        const Request next = get(m_server->url());
        QTRY_COMPARE(m_answers.size(), 1);
    }

    void mayBeGivenUpFromWithinTheCompletion()
    {
        int answers = 0;
        m_request = m_client->get(m_server->url(), [this, &answers](const HttpAnswer &) {
            ++answers;
            m_request.reset();
        });
        QTRY_COMPARE(answers, 1);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(answers, 1);
    }

    void mayBeGivenUpWhenItTimesOut()
    {
        int answers = 0;
        m_request = m_client->get(m_server->url(QStringLiteral("/silent")), [this, &answers](const HttpAnswer &given) {
            answers += given.failure ? 1 : 0;
            m_request.reset();
        });
        m_clock->advance(12s);
        QCOMPARE(answers, 1);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QCOMPARE(answers, 1);
    }

    void mayAskAgainFromWithinTheCompletion()
    {
        Request second;
        m_request =
            m_client->get(m_server->url(), [this, &second](const HttpAnswer &) { second = get(m_server->url()); });
        QTRY_COMPARE(m_answers.size(), 1);
        QCOMPARE(m_answers.first().status, 200);
    }

    void answersTenAtOnce()
    {
        std::vector<Request> requests;
        QStringList given;
        for (int i = 0; i < 10; ++i) {
            const QString path = QStringLiteral("/%1").arg(i);
            m_server->on(path.toUtf8(), sends(httpAnswer("200 OK", path.toUtf8())));
            requests.push_back(m_client->get(m_server->url(path), [&given, path](const HttpAnswer &one) {
                if (one.body == path.toUtf8())
                    given.append(path);
            }));
        }
        QTRY_COMPARE(given.size(), 10);
        QCOMPARE(given.removeDuplicates(), 0);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void timesOutTenAtOnce()
    {
        std::vector<Request> requests;
        for (int i = 0; i < 10; ++i)
            requests.push_back(get(m_server->url(QStringLiteral("/silent"))));
        QTRY_VERIFY(m_server->openConnections() > 0);
        m_clock->advance(12s);
        QCOMPARE(m_answers.size(), 10);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void endsPromptlyWithRequestsUnderWay()
    {
        std::vector<Request> requests;
        for (int i = 0; i < 10; ++i)
            requests.push_back(get(m_server->url(QStringLiteral("/silent"))));
        QTRY_VERIFY(m_server->openConnections() > 0);
        QElapsedTimer timer;
        timer.start();
        m_client.reset();
        QVERIFY2(timer.elapsed() < promptly, QByteArray::number(timer.elapsed()).constData());
        QTRY_COMPARE(m_server->openConnections(), 0);
        QTRY_COMPARE(requestThreads(), 0);
        m_clock->advance(1min);
        QVERIFY(m_answers.isEmpty());
        requests.clear();
    }

    /// Qt does not look up from the head of an unprotected answer before there is a pause in it.
    void isInTimeAlsoWithAHeadThatNeverEnds()
    {
        qint64 sent = 0;
        // Qt reads a head byte by byte, and for good leaves a thread of its own behind that does so for five seconds
        // after its end. This is enough to keep it busy, and little enough for a machine that is slow.
        m_server->on("/flood", floods("HTTP/1.1 200 OK\r\nX-Filler: ", QByteArray(4096, 'x'), 400'000, sent));
        m_request = get(m_server->url(QStringLiteral("/flood")));
        QTRY_VERIFY(sent > 300'000);
        m_clock->advance(12s);
        QCOMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first().failure);
        QElapsedTimer timer;
        timer.start();
        m_client.reset();
        QVERIFY2(timer.elapsed() < promptly, QByteArray::number(timer.elapsed()).constData());
        m_server.reset();
        QTRY_COMPARE_WITH_TIMEOUT(requestThreads(), 0, 30'000);
    }

    void endsRightAfterItWasAsked()
    {
        for (int i = 0; i < 20; ++i) {
            m_request = get(m_server->url());
            m_client = std::make_unique<QtHttpClient>(*m_clock);
        }
        QVERIFY(m_answers.isEmpty());
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void mayEndFromWithinTheCompletion()
    {
        int answers = 0;
        m_request = m_client->get(m_server->url(), [this, &answers](const HttpAnswer &) {
            ++answers;
            m_client.reset();
        });
        QTRY_COMPARE(answers, 1);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    /// The look-up of a proxy waits for servers that may not be there, and nothing can interrupt it.
    void neitherStartsNorEndsWithAStuckLookUp()
    {
        QSemaphore entered;
        QSemaphore mayEnd;
        QNetworkProxyFactory::setApplicationProxyFactory(new StuckProxies(entered, mayEnd));
        QElapsedTimer timer;
        timer.start();
        m_request = get(QUrl(QStringLiteral("https://no-such-host.invalid/")));
        QVERIFY2(timer.elapsed() < promptly, QByteArray::number(timer.elapsed()).constData());
        QTRY_COMPARE(entered.available(), 1);
        m_clock->advance(12s);
        QCOMPARE(m_answers.size(), 1);
        timer.restart();
        m_client.reset();
        QVERIFY2(timer.elapsed() < promptly, QByteArray::number(timer.elapsed()).constData());
        mayEnd.release(100);
        QTRY_COMPARE(requestThreads(), 0);
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        QCOMPARE(m_answers.size(), 1);
    }

private:
    std::unique_ptr<HttpServer> m_server;
};

MOORLINE_TEST(HttpLifetimeTest);

#include "HttpLifetimeTest.moc"

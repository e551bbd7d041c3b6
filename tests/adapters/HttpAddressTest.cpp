#include "HttpTestCase.h"

#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>

using namespace moorline;
using namespace moorline::test;

namespace {

const QString unprotected = QStringLiteral("The answer redirects to an unprotected address.");
const QByteArray json = QByteArrayLiteral("{\"temperature\": 21.5}");

/// What a server needs to prove that it is this machine, to whoever trusts it.
QSslConfiguration makeIdentity(const QString &folder)
{
    const QString key = folder + QStringLiteral("/key.pem");
    const QString certificate = folder + QStringLiteral("/certificate.pem");
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"), QStringLiteral("rsa:2048"),
            QStringLiteral("-noenc"), QStringLiteral("-keyout"), key, QStringLiteral("-out"), certificate,
            QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"),
            QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1")});
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        return {};
    QFile keyFile(key);
    if (!keyFile.open(QIODevice::ReadOnly))
        return {};
    QSslConfiguration identity = QSslConfiguration::defaultConfiguration();
    identity.setPrivateKey(QSslKey(&keyFile, QSsl::Rsa));
    identity.setLocalCertificateChain(QSslCertificate::fromPath(certificate));
    return identity;
}

std::unique_ptr<HttpServer> makeProtectedServer(const QSslConfiguration &identity)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(identity);
    return std::make_unique<HttpServer>(std::move(server), QStringLiteral("https"));
}

} // namespace

class HttpAddressTest final : public HttpTestCase {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        HttpTestCase::initTestCase();
        m_usual = QSslConfiguration::defaultConfiguration();
        m_identity = makeIdentity(m_folder.path());
        QVERIFY(!m_identity.privateKey().isNull());
        QCOMPARE(m_identity.localCertificateChain().size(), 1);
    }

    void init()
    {
        HttpTestCase::init();
        m_server = std::make_unique<HttpServer>();
        m_protected = makeProtectedServer(m_identity);
        m_protected->on("/", sends(httpAnswer("200 OK", json, {"Content-Type: application/json"})));
    }

    void cleanup()
    {
        HttpTestCase::cleanup();
        m_server.reset();
        m_protected.reset();
        QSslConfiguration::setDefaultConfiguration(m_usual);
    }

    void refusesWhatIsNoWebAddress_data()
    {
        QTest::addColumn<QUrl>("url");
        const auto row = [](const char *text) { QTest::newRow(text) << QUrl(QString::fromUtf8(text)); };
        QTest::newRow("none") << QUrl();
        row("relative/path");
        row("//host/path");
        row("http:///path");
        row("https://");
        row("http://host:99999/");
        row("http://a b/");
        row("file:///etc/passwd");
        row("data:application/json,{}");
        row("ftp://127.0.0.1/");
        row("qrc:/symbols");
        row("preconnect-http://127.0.0.1/");
    }

    void refusesWhatIsNoWebAddress()
    {
        QFETCH(QUrl, url);
        m_request = get(url);
        QVERIFY(m_answers.isEmpty());
        QTRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first().failure);
        QVERIFY(!m_answers.first().failure->isEmpty());
        QVERIFY(m_answers.first().body.isEmpty());
    }

    void staysSilentWhenARefusalIsGivenUp()
    {
        m_request = get(QUrl());
        m_request.reset();
        m_request = get(QUrl());
        QTRY_COMPARE(m_answers.size(), 1);
    }

    void failsAtOnceWhereNobodyListens()
    {
        const QUrl url = m_server->url();
        m_server.reset();
        const HttpAnswer answer = answerTo(url);
        QVERIFY(answer.failure);
        QVERIFY(!answer.failure->isEmpty());
    }

    void failsWhereNobodyIsKnown()
    {
        const HttpAnswer answer = answerTo(QUrl(QStringLiteral("https://no-such-host.invalid/")));
        QVERIFY(answer.failure);
        QVERIFY(!answer.failure->isEmpty());
    }

    void refusesAServerThatNobodyVouchesFor()
    {
        const HttpAnswer answer = answerTo(m_protected->url());
        QVERIFY(answer.failure);
        QVERIFY(!answer.failure->isEmpty());
        QVERIFY(m_protected->requests().isEmpty());
    }

    void refusesACertificateOfAnotherName()
    {
        trust();
        QUrl url = m_protected->url();
        url.setHost(QStringLiteral("localhost"));
        QVERIFY(answerTo(url).failure);
        QVERIFY(m_protected->requests().isEmpty());
    }

    void acceptsAServerThatIsVouchedFor()
    {
        trust();
        const HttpAnswer answer = answerTo(m_protected->url());
        QCOMPARE(answer.failure, std::nullopt);
        QCOMPARE(answer.body, json);
        QTRY_COMPARE(m_protected->openConnections(), 0);
    }

    void refusesABodyThatIsTooLargeAlsoWhenProtected()
    {
        trust();
        qint64 sent = 0;
        constexpr qint64 size = qint64(50) * 1024 * 1024;
        m_protected->on("/", floods("HTTP/1.1 200 OK\r\n\r\n", QByteArray(4096, 'x'), size, sent));
        QCOMPARE(answerTo(m_protected->url()).failure, QStringLiteral("The answer is too large."));
        QVERIFY2(sent < size / 3, QByteArray::number(sent).constData());
    }

    void acceptsTheLargestBodyAlsoWhenProtected()
    {
        trust();
        m_protected->on("/", sends(httpAnswer("200 OK", QByteArray(HttpClient::usualBody, 'x'))));
        QCOMPARE(answerTo(m_protected->url()).body.size(), HttpClient::usualBody);
    }

    void doesNotHoldAHeadThatNeverEnds_data()
    {
        QTest::addColumn<QByteArray>("piece");
        QTest::newRow("one line") << QByteArray(4096, 'x');
        QTest::newRow("many lines") << "x\r\nX-Filler: " + QByteArray(4096, 'x');
    }

    void doesNotHoldAHeadThatNeverEnds()
    {
        QFETCH(QByteArray, piece);
        trust();
        qint64 sent = 0;
        constexpr qint64 size = qint64(200) * 1024 * 1024;
        m_protected->on("/", floods("HTTP/1.1 200 OK\r\nX-Filler: ", piece, size, sent));
        m_request = get(m_protected->url());
        QTRY_VERIFY(sent > HttpClient::usualBody);
        m_clock->advance(HttpClient::timeLimit);
        QTRY_COMPARE(m_protected->openConnections(), 0);
        QCOMPARE(m_answers.size(), 1);
        QVERIFY(m_answers.first().failure);
        QVERIFY2(sent < size / 4, QByteArray::number(sent).constData());
    }

    void refusesARedirectToAnUnprotectedAddress()
    {
        m_server->on("/", sends(httpAnswer("200 OK", json)));
        m_server->on("/moved", redirectsTo("/"));
        QCOMPARE(answerTo(m_server->url(QStringLiteral("/moved"))).failure, unprotected);
        QCOMPARE(m_server->requests().size(), 1);
    }

    void refusesARedirectFromAProtectedToAnUnprotectedAddress()
    {
        trust();
        m_server->on("/", sends(httpAnswer("200 OK", json)));
        m_protected->on("/moved", redirectsTo(m_server->url().toEncoded()));
        QCOMPARE(answerTo(m_protected->url(QStringLiteral("/moved"))).failure, unprotected);
        QVERIFY(m_server->requests().isEmpty());
    }

    void refusesARedirectToWhatIsNoWebAddress_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("file") << QByteArray("file:///etc/passwd");
        QTest::newRow("data") << QByteArray("data:application/json,{}");
        QTest::newRow("ftp") << QByteArray("ftp://127.0.0.1/");
        QTest::newRow("damaged") << QByteArray("https://[");
        QTest::newRow("no host") << QByteArray("https://");
    }

    void refusesARedirectToWhatIsNoWebAddress()
    {
        QFETCH(QByteArray, target);
        m_server->on("/", redirectsTo(target));
        QVERIFY(answerTo(m_server->url()).failure);
    }

    void followsARedirectToAProtectedAddress_data()
    {
        QTest::addColumn<bool>("isFromProtected");
        QTest::newRow("from a protected one") << true;
        QTest::newRow("from an unprotected one") << false;
    }

    void followsARedirectToAProtectedAddress()
    {
        QFETCH(bool, isFromProtected);
        trust();
        HttpServer &first = isFromProtected ? *m_protected : *m_server;
        first.on("/moved", redirectsTo(m_protected->url().toEncoded()));
        const HttpAnswer answer = answerTo(first.url(QStringLiteral("/moved")));
        QCOMPARE(answer.failure, std::nullopt);
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.body, json);
        const QByteArray head = m_protected->requests().constLast().toLower();
        QVERIFY2(head.contains("\r\nuser-agent: moorline/1.2.3\r\n"), head.constData());
    }

    void followsFiveRedirects()
    {
        trust();
        redirectInARow(5);
        QCOMPARE(answerTo(m_protected->url(QStringLiteral("/5"))).body, json);
    }

    void refusesTheSixthRedirect()
    {
        trust();
        redirectInARow(6);
        const HttpAnswer answer = answerTo(m_protected->url(QStringLiteral("/6")));
        QCOMPARE(answer.failure, QStringLiteral("The answer redirects too often."));
    }

    void leavesACircleOfRedirects()
    {
        trust();
        m_protected->on("/circle", redirectsTo("/circle"));
        QVERIFY(answerTo(m_protected->url(QStringLiteral("/circle"))).failure);
        QCOMPARE(m_protected->requests().size(), 6);
    }

private:
    /// As a user does who installs the certificate.
    void trust() const
    {
        QSslConfiguration trusting = m_usual;
        trusting.setCaCertificates(m_identity.localCertificateChain());
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void redirectInARow(int count)
    {
        for (int i = count; i > 1; --i)
            m_protected->on('/' + QByteArray::number(i), redirectsTo('/' + QByteArray::number(i - 1)));
        m_protected->on("/1", redirectsTo("/"));
    }

    QTemporaryDir m_folder;
    QSslConfiguration m_usual;
    QSslConfiguration m_identity;
    std::unique_ptr<HttpServer> m_server;
    std::unique_ptr<HttpServer> m_protected;
};

MOORLINE_TEST(HttpAddressTest);

#include "HttpAddressTest.moc"

#include "HttpTestCase.h"

#include <QFile>
#include <array>

using namespace moorline;
using namespace moorline::test;

namespace {

constexpr qint64 mebibyte = qint64(1024) * 1024;
constexpr qint64 bombSize = 50 * mebibyte;
// A body of the largest size while it grows, what lies in the buffers of both ends of a connection, and slack.
constexpr qint64 acceptedGrowth = bombSize / 2;

const QString tooLarge = QStringLiteral("The answer is too large.");

QByteArray littleEndian(quint32 value)
{
    std::array<char, 4> bytes{};
    for (char &byte : bytes) {
        byte = static_cast<char>(value & 0xFFU);
        value >>= 8U;
    }
    return {bytes.data(), bytes.size()};
}

quint32 checksum(const QByteArray &data)
{
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : data) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1U) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

/// As a server sends it with "deflate". Qt adds the length before it.
QByteArray deflated(const QByteArray &data)
{
    return qCompress(data, 9).mid(4);
}

QByteArray gzipped(const QByteArray &data)
{
    const QByteArray bare = deflated(data).mid(2).chopped(4);
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + bare + littleEndian(checksum(data))
        + littleEndian(static_cast<quint32>(data.size()));
}

/// In bytes.
qint64 processMemory(const QByteArray &name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).trimmed().split(' ').constFirst().toLongLong() * 1024;
    }
    return -1;
}

/// How much more memory was in use at the worst moment since then.
class MemoryPeak final {
public:
    MemoryPeak()
    {
        QFile file(QStringLiteral("/proc/self/clear_refs"));
        m_isMeasured = file.open(QIODevice::WriteOnly) && file.write("5") == 1;
        file.close();
        m_before = processMemory("VmRSS");
    }

    [[nodiscard]] bool isMeasured() const { return m_isMeasured && m_before > 0; }
    [[nodiscard]] qint64 growth() const { return processMemory("VmHWM") - m_before; }

private:
    qint64 m_before = 0;
    bool m_isMeasured = false;
};

} // namespace

class HttpSizeTest final : public HttpTestCase {
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

    void acceptsTheLargestBody()
    {
        const QByteArray largest(HttpClient::usualBody, 'x');
        m_server->on("/", sends(httpAnswer("200 OK", largest)));
        const HttpAnswer answer = answerTo(m_server->url());
        QCOMPARE(answer.status, 200);
        QVERIFY(answer.body == largest);
    }

    void refusesOneByteMore()
    {
        m_server->on("/", sends(httpAnswer("200 OK", QByteArray(HttpClient::usualBody + 1, 'x'))));
        QCOMPARE(answerTo(m_server->url()).failure, tooLarge);
    }

    void acceptsAsMuchAsWhoeverAsksSays()
    {
        const QByteArray body(3 * HttpClient::usualBody, 'x');
        m_server->on("/", sends(httpAnswer("200 OK", body)));
        QCOMPARE(answerTo(m_server->url(), body.size()).body.size(), body.size());
        QCOMPARE(answerTo(m_server->url(), body.size() - 1).failure, tooLarge);
    }

    void stopsReadingABodyThatIsTooLarge_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("piece");
        const QByteArray piece(4096, 'x');
        const QByteArray length = "Content-Length: " + QByteArray::number(bombSize) + "\r\n\r\n";
        QTest::newRow("announced") << "HTTP/1.1 200 OK\r\n" + length << piece;
        QTest::newRow("of an error") << "HTTP/1.1 500 Oh\r\n" + length << piece;
        QTest::newRow("not announced") << QByteArray("HTTP/1.1 200 OK\r\n\r\n") << piece;
        QTest::newRow("in chunks") << QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n")
                                   << "1000\r\n" + piece + "\r\n";
    }

    void stopsReadingABodyThatIsTooLarge()
    {
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, piece);
        qint64 sent = 0;
        m_server->on("/", floods(head, piece, bombSize, sent));
        const MemoryPeak peak;
        QVERIFY(peak.isMeasured());
        QCOMPARE(answerTo(m_server->url()).failure, tooLarge);
        QTRY_COMPARE(m_server->openConnections(), 0);
        QVERIFY2(sent < acceptedGrowth, QByteArray::number(sent).constData());
        QVERIFY2(peak.growth() < acceptedGrowth, QByteArray::number(peak.growth()).constData());
    }

    void unpacksACompressedBody_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<QByteArray>("packed");
        const QByteArray body = QByteArrayLiteral("{\"temperature\": 21.5}");
        QTest::newRow("gzip") << QByteArray("gzip") << gzipped(body);
        QTest::newRow("deflate") << QByteArray("deflate") << deflated(body);
    }

    void unpacksACompressedBody()
    {
        QFETCH(QByteArray, encoding);
        QFETCH(QByteArray, packed);
        m_server->on("/", sends(httpAnswer("200 OK", packed, {"Content-Encoding: " + encoding})));
        const HttpAnswer answer = answerTo(m_server->url());
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.body, QByteArray("{\"temperature\": 21.5}"));
    }

    void unpacksTheLargestBody()
    {
        QByteArray largest(HttpClient::usualBody, 'x');
        // Not all alike, so that it comes in many pieces.
        for (qsizetype i = 0; i < largest.size(); ++i)
            largest[i] = static_cast<char>((i * i) >> 7);
        m_server->on("/", sends(httpAnswer("200 OK", gzipped(largest), {"Content-Encoding: gzip"})));
        const HttpAnswer answer = answerTo(m_server->url());
        QCOMPARE(answer.status, 200);
        QVERIFY(answer.body == largest);
    }

    void failsOnDamagedCompression()
    {
        m_server->on("/", sends(httpAnswer("200 OK", "no gzip", {"Content-Encoding: gzip"})));
        QVERIFY(answerTo(m_server->url()).failure);
    }

    void stopsUnpackingABomb_data()
    {
        QTest::addColumn<bool>("isGzip");
        QTest::newRow("gzip") << true;
        QTest::newRow("deflate") << false;
    }

    void stopsUnpackingABomb()
    {
        QFETCH(bool, isGzip);
        const QByteArray zeros(bombSize, '\0');
        const QByteArray packed = isGzip ? gzipped(zeros) : deflated(zeros);
        QVERIFY(packed.size() < HttpClient::usualBody);
        m_server->on("/",
            sends(httpAnswer("200 OK", packed, {QByteArray("Content-Encoding: ") + (isGzip ? "gzip" : "deflate")})));
        const MemoryPeak peak;
        QVERIFY(peak.isMeasured());
        QCOMPARE(answerTo(m_server->url()).failure, tooLarge);
        QVERIFY2(peak.growth() < acceptedGrowth, QByteArray::number(peak.growth()).constData());
    }

private:
    std::unique_ptr<HttpServer> m_server;
};

MOORLINE_TEST(HttpSizeTest);

#include "HttpSizeTest.moc"

#include "music/CoverSource.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

namespace {

const CoverSource nowhere;

CoverSource source(const QByteArray &url)
{
    return coverSource(QUrl::fromEncoded(url));
}

CoverSource data(const QByteArray &bytes)
{
    return CoverData{bytes};
}

CoverSource address(const char *url)
{
    return CoverAddress{QUrl(QString::fromLatin1(url))};
}

} // namespace

class CoverSourceTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isWhereItIs_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<CoverSource>("expected");
        const auto row = [](const char *url, const CoverSource &expected) {
            QTest::newRow(url) << QByteArray(url) << expected;
        };
        row("file:///tmp/a.png", CoverFile{QStringLiteral("/tmp/a.png")});
        row("file:///tmp/a%20b%25.png", CoverFile{QStringLiteral("/tmp/a b%.png")});
        row("file:///tmp/%C3%A9", CoverFile{QStringLiteral("/tmp/\u00e9")});
        row("file:///tmp/%E9", nowhere);
        row("file://localhost/tmp/a.png", CoverFile{QStringLiteral("/tmp/a.png")});
        row("file://example.org/tmp/a.png", nowhere);
        row("file://", nowhere);
        row("file:cover.png", nowhere);
        row("http://example.org/a.png", address("http://example.org/a.png"));
        row("https://example.org/a.png?b=c", address("https://example.org/a.png?b=c"));
        row("https://open.spotify.com/image/ab67", address("https://i.scdn.co/image/ab67"));
        row("http://open.spotify.com/image/ab67", address("http://i.scdn.co/image/ab67"));
        row("https://open.spotify.com/track/ab67", address("https://open.spotify.com/track/ab67"));
        row("https://open.spotify.com.example.org/image/a", address("https://open.spotify.com.example.org/image/a"));
        row("ftp://example.org/a.png", nowhere);
        row("qrc:/symbols/trash.svg", nowhere);
        row("attachment:a.png", nowhere);
        row("a.png", nowhere);
        row("/tmp/a.png", nowhere);
        row("", nowhere);
        row("data:image/png;base64,AAEC", data("AAEC"));
        row("DATA:Image/PNG;Base64,AAEC", data("AAEC"));
        row("data:image/jpeg;charset=utf-8;base64,AAEC", data("AAEC"));
        row("data:image/png;base64,//%2B8=", data("//%2B8="));
        row("data:image/png;base64,AA%0AE%43", data("AA%0AEC"));
        row("data:image/png;base64,", nowhere);
        row("data:image/png,AAEC", nowhere);
        row("data:;base64,AAEC", nowhere);
        row("data:text/html;base64,AAEC", nowhere);
        row("data:image/svg+xml;base64,AAEC", nowhere);
        row("data:IMAGE/SVG+XML;base64,AAEC", nowhere);
        row("data:image/png;base64", nowhere);
    }

    void isWhereItIs()
    {
        QFETCH(const QByteArray, url);
        QFETCH(const CoverSource, expected);
        QVERIFY(source(url) == expected);
    }

    void whatIsTooLargeIsNotLookedFor()
    {
        // As many letters as ten MiB need, each of them written in three.
        constexpr qsizetype largest = 41'943'048;
        const QByteArray head = "data:image/png;base64,";
        QVERIFY(source(head + QByteArray(largest, 'a')) == data(QByteArray(largest, 'a')));
        QVERIFY(source(head + QByteArray(largest + 1, 'a')) == nowhere);
    }
};

MOORLINE_TEST(CoverSourceTest);
#include "CoverSourceTest.moc"

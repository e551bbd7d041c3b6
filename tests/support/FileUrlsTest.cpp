#include "support/FileUrls.h"

#include "harness/TestCase.h"

using namespace moorline;

class FileUrlsTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPathComesBackAsItWas_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("address");
        const auto row = [](const char *name, const QByteArray &path, const QByteArray &address) {
            QTest::newRow(name) << path << address;
        };
        row("plain", "/home/me/a.txt", "file:///home/me/a.txt");
        row("a space", "/a b", "file:///a%20b");
        row("a percent sign", "/100%", "file:///100%25");
        row("what looks encoded", "/a%20b", "file:///a%2520b");
        row("marks of addresses", "/a#b?c;d&e", "file:///a%23b%3Fc%3Bd%26e");
        row("quotes", "/\"a\" 'b'", "file:///%22a%22%20%27b%27");
        row("a line feed", "/a\nb", "file:///a%0Ab");
        row("brackets", "/[a]", "file:///%5Ba%5D");
        row("beyond ASCII", "/\xc3\xbc", "file:///%C3%BC");
        row("no text",
            "/a\xff\xfe"
            "b",
            "file:///a%FF%FEb");
        row("a backslash", "/a\\b", "file:///a%5Cb");
        row("two slashes", "//a", "file:////a");
    }

    void aPathComesBackAsItWas()
    {
        QFETCH(QByteArray, path);
        const QUrl url = fileUrl(path);
        QVERIFY(url.isLocalFile());
        QTEST(url.toEncoded(QUrl::FullyEncoded), "address");
        QCOMPARE(pathBytes(url), path);
    }

    void whatIsNoTextHasNone()
    {
        QCOMPARE(pathText(fileUrl("/\xc3\xbc 100%")), std::optional(QStringLiteral("/ü 100%")));
        QCOMPARE(pathText(fileUrl("/a\xff")), std::nullopt);
        QCOMPARE(pathText(fileUrl("/\xed\xa0\x80")), std::nullopt);
        QCOMPARE(pathText(fileUrl("/\xc3")), std::nullopt);
    }
};

MOORLINE_TEST(FileUrlsTest);
#include "FileUrlsTest.moc"

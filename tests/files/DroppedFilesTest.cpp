#include "files/DroppedFiles.h"
#include "harness/TestCase.h"

#include <QMimeData>
#include <QSysInfo>

using namespace moorline;

namespace {

QUrl link(const char *text)
{
    return QUrl(QString::fromUtf8(text));
}

/// What another program offers, as it sent it. QMimeData itself would have read it as addresses.
class Offer final : public QMimeData {
public:
    explicit Offer(QByteArray list)
        : m_list(std::move(list))
    {
    }

    [[nodiscard]] QStringList formats() const override { return {QStringLiteral("text/uri-list")}; }

protected:
    [[nodiscard]] QVariant retrieveData(const QString &, QMetaType) const override { return m_list; }

private:
    QByteArray m_list;
};

} // namespace

class DroppedFilesTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void filesComeInDropOrderWithoutTheLinks()
    {
        QMimeData dropped;
        dropped.setUrls({link("file:///b.txt"), link("https://example.org/c.txt"), link("file:///a%20b")});
        QCOMPARE(loadDroppedFileURLs(dropped), (QList{link("file:///b.txt"), link("file:///a%20b")}));
    }

    void dropWithoutFilesGivesNone()
    {
        QMimeData dropped;
        dropped.setUrls({link("https://example.org"), link("mailto:someone@example.org"), link("smb://host/share")});
        QVERIFY(loadDroppedFileURLs(dropped).isEmpty());
    }

    void filesMayBeHeldByAListOfAddresses()
    {
        QVERIFY(mayHoldFiles({QStringLiteral("text/plain"), QStringLiteral("text/uri-list")}));
        QVERIFY(!mayHoldFiles({QStringLiteral("text/plain"), QStringLiteral("text/html")}));
        QVERIFY(!mayHoldFiles({}));
    }

    void dropOfTextGivesNone()
    {
        QMimeData dropped;
        dropped.setText(QStringLiteral("/home/me/file.txt"));
        QVERIFY(loadDroppedFileURLs(dropped).isEmpty());
    }

    void emptyDropGivesNone() { QVERIFY(loadDroppedFileURLs(QMimeData()).isEmpty()); }

    void uriListOfAnotherProgramIsRead()
    {
        const Offer dropped("file:///x\r\nhttp://example.org\r\nfile:///y%C3%A9\r\n");
        QCOMPARE(loadDroppedFileURLs(dropped), (QList{link("file:///x"), link("file:///yé")}));
    }

    void addressesAreBytesToTheEnd_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("space") << QByteArray("file:///a%20b") << QByteArray("file:///a%20b");
        QTest::newRow("space, not escaped") << QByteArray("file:///a b") << QByteArray("file:///a%20b");
        QTest::newRow("percent") << QByteArray("file:///100%25") << QByteArray("file:///100%25");
        QTest::newRow("percent, not escaped") << QByteArray("file:///100%") << QByteArray("file:///100%25");
        QTest::newRow("percent before letters") << QByteArray("file:///5%zoo") << QByteArray("file:///5%25zoo");
        QTest::newRow("escaped escape") << QByteArray("file:///a%2541") << QByteArray("file:///a%2541");
        QTest::newRow("line feed") << QByteArray("file:///a%0Ab") << QByteArray("file:///a%0Ab");
        QTest::newRow("not UTF-8") << QByteArray("file:///caf%E9") << QByteArray("file:///caf%E9");
        QTest::newRow("not UTF-8, not escaped") << QByteArray("file:///caf\xe9") << QByteArray("file:///caf%E9");
        QTest::newRow("UTF-8, not escaped") << QByteArray("file:///\xc3\xa9") << QByteArray("file:///%C3%A9");
        QTest::newRow("hash") << QByteArray("file:///a%23b") << QByteArray("file:///a%23b");
        QTest::newRow("question mark") << QByteArray("file:///a%3Fb") << QByteArray("file:///a%3Fb");
        QTest::newRow("question mark, not escaped") << QByteArray("file:///a?b") << QByteArray("file:///a%3Fb");
        QTest::newRow("place in a file") << QByteArray("file:///a.html#b") << QByteArray("file:///a.html");
        QTest::newRow("slash in a name") << QByteArray("file:///a%2Fb") << QByteArray("file:///a%2Fb");
        QTest::newRow("one slash") << QByteArray("file:/a") << QByteArray("file:///a");
        QTest::newRow("localhost") << QByteArray("file://localhost/a") << QByteArray("file:///a");
        QTest::newRow("this machine") << "file://" + QSysInfo::machineHostName().toUtf8() + "/a"
                                      << QByteArray("file:///a");
        QTest::newRow("folder") << QByteArray("file:///a/") << QByteArray("file:///a/");
    }

    void addressesAreBytesToTheEnd()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, expected);
        const Offer dropped(line + "\r\n");
        const QList<QUrl> files = loadDroppedFileURLs(dropped);
        QCOMPARE(files.size(), 1);
        QCOMPARE(files.first().toEncoded(), expected);
        QVERIFY(files.first().isLocalFile());
    }

    void whatIsNoFileOfThisMachineIsLeftOut_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("of another machine") << QByteArray("file://elsewhere.example.org/a");
        QTest::newRow("with a zero byte") << QByteArray("file:///a%00b");
        QTest::newRow("a comment") << QByteArray("#file:///a");
        QTest::newRow("no scheme") << QByteArray("/a");
        QTest::newRow("no path") << QByteArray("file://");
        QTest::newRow("relative") << QByteArray("file:a");
        QTest::newRow("nothing") << QByteArray("");
        QTest::newRow("noise") << QByteArray("\xff\xfe\x01");
    }

    void whatIsNoFileOfThisMachineIsLeftOut()
    {
        QFETCH(QByteArray, line);
        const Offer dropped(line + "\nfile:///b\n");
        QCOMPARE(loadDroppedFileURLs(dropped), QList{link("file:///b")});
    }

    void linesEndInEitherWay()
    {
        const Offer dropped("file:///a\nfile:///b\r\n\nfile:///c");
        QCOMPARE(loadDroppedFileURLs(dropped), (QList{link("file:///a"), link("file:///b"), link("file:///c")}));
    }

    void sameFileTwiceComesTwice()
    {
        QMimeData dropped;
        dropped.setUrls({link("file:///a"), link("file:///a")});
        QCOMPARE(loadDroppedFileURLs(dropped).size(), 2);
    }
};

MOORLINE_TEST(DroppedFilesTest);
#include "DroppedFilesTest.moc"

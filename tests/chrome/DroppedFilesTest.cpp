#include "chrome/DroppedFiles.h"
#include "harness/TestCase.h"

#include <QMimeData>

using namespace moorline;

namespace {

QUrl link(const char *text)
{
    return QUrl(QString::fromUtf8(text));
}

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
        QMimeData dropped;
        dropped.setData(QStringLiteral("text/uri-list"), "file:///x\r\nhttp://example.org\r\nfile:///y%C3%A9\r\n");
        QCOMPARE(loadDroppedFileURLs(dropped), (QList{link("file:///x"), link("file:///yé")}));
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

#include "platform/linux/icons/IconPicture.h"

#include "IconsOnDisk.h"
#include "PngHeader.h"
#include "harness/TestCase.h"

#include <sys/stat.h>
#include <unistd.h>

namespace moorline::test {

class IconPictureTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void readsEveryKindOfFile()
    {
        const QString xpm = m_disk.write(QStringLiteral("a.xpm"),
            "/* XPM */\nstatic char *a[] = {\n\"2 2 1 1\",\n\"x c #ff0000\",\n\"xx\",\n\"xx\"};\n");
        for (const QString &path :
            {m_disk.writePng(QStringLiteral("a.png"), Qt::red), m_disk.writeSvg(QStringLiteral("a.svg"), "red"), xpm}) {
            const QImage picture = iconPicture(path, 46);
            QCOMPARE(picture.size(), QSize(46, 46));
            QCOMPARE(picture.format(), QImage::Format_ARGB32_Premultiplied);
            QCOMPARE(middle(picture), QColor(Qt::red));
            QCOMPARE(picture.pixelColor(0, 0), QColor(Qt::red));
            QCOMPARE(picture.pixelColor(45, 45), QColor(Qt::red));
        }
    }

    void aPictureThatIsNoSquareStandsInTheMiddle()
    {
        const QImage picture = iconPicture(m_disk.writePng(QStringLiteral("wide.png"), Qt::red, {80, 40}), 40);
        QCOMPARE(picture.size(), QSize(40, 40));
        QCOMPARE(picture.pixelColor(20, 9).alpha(), 0);
        QCOMPARE(picture.pixelColor(20, 10), QColor(Qt::red));
        QCOMPARE(picture.pixelColor(20, 29), QColor(Qt::red));
        QCOMPARE(picture.pixelColor(20, 30).alpha(), 0);
    }

    void aDrawingIsDrawnAtTheSizeItIsWanted()
    {
        const QString path = m_disk.write(QStringLiteral("half.svg"),
            "<svg xmlns='http://www.w3.org/2000/svg' width='2' height='2'><rect width='1' height='2' "
            "fill='red'/></svg>");
        const QImage picture = iconPicture(path, 100);
        QCOMPARE(picture.pixelColor(49, 50), QColor(Qt::red));
        QCOMPARE(picture.pixelColor(50, 50).alpha(), 0);
    }

    void aSizeThatIsAMistakeIsRefused()
    {
        const QString path = m_disk.writePng(QStringLiteral("a.png"), Qt::red);
        QVERIFY(iconPicture(path, 0).isNull());
        QVERIFY(iconPicture(path, -1).isNull());
        QVERIFY(!iconPicture(path, 1024).isNull());
        QVERIFY(iconPicture(path, 1025).isNull());
    }

    void whatIsNoRegularFileIsNotRead()
    {
        const QString pipe = m_disk.path(QStringLiteral("pipe.png"));
        QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(iconPicture(pipe, 46).isNull());
        QDir().mkpath(m_disk.path(QStringLiteral("folder.svg")));
        QVERIFY(iconPicture(m_disk.path(QStringLiteral("folder.svg")), 46).isNull());
        QVERIFY(iconPicture(m_disk.path(QStringLiteral("missing.png")), 46).isNull());
        const QString loop = m_disk.path(QStringLiteral("loop.png"));
        QCOMPARE(::symlink(qPrintable(loop), qPrintable(loop)), 0);
        QVERIFY(iconPicture(loop, 46).isNull());
        const QString endless = m_disk.path(QStringLiteral("endless.png"));
        QCOMPARE(::symlink("/dev/zero", qPrintable(endless)), 0);
        QVERIFY(iconPicture(endless, 46).isNull());
    }

    void aFileBeyondFourMebibytesIsNotRead()
    {
        const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='2' height='2'><rect width='2' "
                               "height='2' fill='red'/></svg>";
        const qsizetype limit = qsizetype(4) * 1024 * 1024;
        QCOMPARE(middle(iconPicture(
                     m_disk.write(QStringLiteral("full.svg"), svg + QByteArray(limit - svg.size(), ' ')), 46)),
            QColor(Qt::red));
        QVERIFY(iconPicture(m_disk.write(QStringLiteral("over.svg"), svg + QByteArray(limit + 1 - svg.size(), ' ')), 46)
                    .isNull());
    }

    void aPictureThatSaysItIsHugeIsNotUnpacked()
    {
        QVERIFY(iconPicture(m_disk.write(QStringLiteral("huge.png"), pngHeader(60'000, 60'000)), 46).isNull());
        const QString edge = m_disk.writePng(QStringLiteral("edge.png"), Qt::red, {4096, 1});
        QVERIFY(!iconPicture(edge, 46).isNull());
        QVERIFY(iconPicture(m_disk.writePng(QStringLiteral("beyond.png"), Qt::red, {4097, 1}), 46).isNull());
    }

    void whatIsNotWhatItsNameSaysIsRefused()
    {
        QVERIFY(iconPicture(m_disk.write(QStringLiteral("text.png"), "hello"), 46).isNull());
        const QString png = m_disk.writePng(QStringLiteral("a.png"), Qt::red);
        QVERIFY(QFile::copy(png, m_disk.path(QStringLiteral("png.jpg"))));
        QVERIFY(iconPicture(m_disk.path(QStringLiteral("png.jpg")), 46).isNull());
        QVERIFY(QFile::copy(png, m_disk.path(QStringLiteral("png.xpm"))));
        QVERIFY(iconPicture(m_disk.path(QStringLiteral("png.xpm")), 46).isNull());
        QVERIFY(iconPicture(m_disk.write(QStringLiteral("text.svg"), "hello"), 46).isNull());
        QVERIFY(iconPicture(m_disk.write(QStringLiteral("cut.svg"), "<svg xmlns='http://www.w3.org/2000/svg'>"), 46)
                    .isNull());
    }

    void aDrawingOfOtherFilesIsRefused_data()
    {
        QTest::addColumn<QByteArray>("inside");
        QTest::addColumn<bool>("isDrawn");
        QTest::newRow("nothing") << QByteArray() << true;
        QTest::newRow("its own picture") << QByteArray(
            "<image width='1' height='1' xlink:href='data:image/png;base64,"
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAQAAAC1HAwCAAAAC0lEQVR42mNk+A8AAQUBAScY42YAAAAASUVORK5CYII='/>")
                                         << true;
        QTest::newRow("a path") << QByteArray("<image width='1' height='1' xlink:href='/etc/motd'/>") << false;
        QTest::newRow("an address") << QByteArray("<image width='1' height='1' href='file:///etc/motd'/>") << false;
        QTest::newRow("one deep inside") << QByteArray("<g><defs><image xlink:href='x.png'/></defs></g>") << false;
        QTest::newRow("one in a name space of its own")
            << QByteArray("<s:image xmlns:s='http://www.w3.org/2000/svg' xlink:href='x.png'/>") << false;
        QTest::newRow("a style sheet") << QByteArray("<?xml-stylesheet href='/etc/motd'?>") << false;
    }
    void aDrawingOfOtherFilesIsRefused()
    {
        QFETCH(const QByteArray, inside);
        QFETCH(const bool, isDrawn);
        QCOMPARE(!iconPicture(m_disk.writeSvg(QStringLiteral("a.svg"), "red", inside), 46).isNull(), isDrawn);
    }

    void aCompressedDrawingIsRefused()
    {
        // gzip of a red drawing.
        const QByteArray compressed = QByteArray::fromHex(
            "1f8b08000000000002036d8cbb0e80200c007fa55b374b7033c0cf0852127c041aebe72bbbdb257739d7ef0ccf"
            "5e8fee9145ae854855279da7b365b2c618fa0a042d51d8a345e05432cbc0e05a5ae557c1566af5d852440a6e2c"
            "c20b7e14bad36a000000");
        QVERIFY(iconPicture(m_disk.write(QStringLiteral("packed.svg"), compressed), 46).isNull());
    }

private:
    IconsOnDisk m_disk;
};

MOORLINE_TEST(IconPictureTest);

} // namespace moorline::test

#include "IconPictureTest.moc"

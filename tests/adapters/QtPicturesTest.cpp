#include "platform/qt/QtPictures.h"

#include "IconsOnDisk.h"
#include "PngHeader.h"
#include "SecondVolume.h"
#include "harness/TestCase.h"
#include "platform/qt/RasterPicture.h"

#include <QBuffer>
#include <QImageWriter>
#include <QLoggingCategory>
#include <QScopeGuard>
#include <QThread>
#include <sys/stat.h>
#include <unistd.h>

using namespace moorline;
using namespace moorline::test;

namespace {

QByteArray written(const QImage &image, const char *format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

QImage filled(const QSize &size, const QColor &color = Qt::red)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Red, green and blue side by side.
QImage stripes(const QSize &size)
{
    QImage image = filled(size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = size.width() / 3; x < size.width(); ++x)
            image.setPixelColor(x, y, x < size.width() * 2 / 3 ? Qt::green : Qt::blue);
    }
    return image;
}

/// A JPEG file that says that it is to be turned by a quarter, clockwise. Exif 2.3, orientation 6.
QByteArray turned(const QByteArray &jpeg)
{
    const QByteArray exif = QByteArray::fromHex("ffe10022"
                                                "457869660000"
                                                "49492a0008000000"
                                                "0100"
                                                "1201"
                                                "0300"
                                                "01000000"
                                                "06000000"
                                                "00000000");
    return jpeg.first(2) + exif + jpeg.sliced(2);
}

bool isLike(const QColor &color, const QColor &other)
{
    return std::abs(color.red() - other.red()) < 40 && std::abs(color.green() - other.green()) < 40
        && std::abs(color.blue() - other.blue()) < 40;
}

} // namespace

class QtPicturesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void whatItHoldsDecides_data()
    {
        QTest::addColumn<QByteArray>("data");
        for (const char *format : {"png", "jpeg", "bmp"})
            QTest::newRow(format) << written(filled({64, 64}), format);
        // One pixel, red.
        QTest::newRow("gif") << QByteArray::fromHex(
            "47494638396101000100800000ff0000ffffff21f90400000000002c00000000010001000002024401003b");
    }
    void whatItHoldsDecides()
    {
        QFETCH(const QByteArray, data);
        const QImage decoded = decode(data, 46);
        QCOMPARE(decoded.size(), QSize(46, 46));
        QCOMPARE(decoded.format(), QImage::Format_ARGB32_Premultiplied);
        QVERIFY(isLike(middle(decoded), Qt::red));
        // Whatever the file is called.
        QCOMPARE(read(m_disk.write(QStringLiteral("cover.txt"), data), 46), decoded);
        QCOMPARE(read(m_disk.write(QStringLiteral("cover.svg"), data), 46), decoded);
    }

    void whatIsNotSquareFillsTheSquare_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("wide png") << written(stripes({300, 100}), "png");
        QTest::newRow("tall png") << written(stripes({300, 100}).transformed(QTransform().rotate(90)), "png");
        QTest::newRow("wide jpeg") << written(stripes({300, 100}), "jpeg");
        QTest::newRow("small") << written(stripes({9, 3}), "png");
    }
    void whatIsNotSquareFillsTheSquare()
    {
        QFETCH(const QByteArray, data);
        const QImage picture = decode(data, 50);
        QCOMPARE(picture.size(), QSize(50, 50));
        // The middle stripe alone.
        for (const QPoint &place : {QPoint(3, 3), QPoint(46, 3), QPoint(25, 25), QPoint(3, 46), QPoint(46, 46)})
            QVERIFY2(isLike(picture.pixelColor(place), Qt::green), qPrintable(picture.pixelColor(place).name()));
    }

    void aPictureIsAsItIsMeantToBeSeen()
    {
        const QByteArray jpeg = written(stripes({96, 96}), "jpeg");
        QVERIFY(isLike(decode(jpeg, 48).pixelColor(4, 24), Qt::red));
        const QImage picture = decode(turned(jpeg), 48);
        QVERIFY(isLike(picture.pixelColor(24, 4), Qt::red));
        QVERIFY(isLike(picture.pixelColor(24, 24), Qt::green));
        QVERIFY(isLike(picture.pixelColor(24, 43), Qt::blue));
    }

    void transparencyIsKept()
    {
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QCOMPARE(middle(decode(written(image, "png"), 8)).alpha(), 0);
    }

    void drawingsAreNotDrawn_data()
    {
        QTest::addColumn<QByteArray>("data");
        const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>"
                               "<rect width='9' height='9' fill='red'/></svg>";
        QTest::newRow("svg") << svg;
        QTest::newRow("svg with a head") << "<?xml version='1.0'?>" + svg;
        QTest::newRow("svg, compressed") << QByteArray::fromHex(
            "1f8b08000000000002036d8cbb0e80200c007fa55b374b7033c0cf0852127c041aebe72bbbdb257739d7ef0ccf"
            "5e8fee9145ae854855279da7b365b2c618fa0a042d51d8a345e05432cbc0e05a5ae557c1566af5d852440a6e2c"
            "c20b7e14bad36a000000");
        QTest::newRow("postscript") << QByteArray("%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 9 9\nshowpage\n");
        QTest::newRow("xpm") << QByteArray(
            "/* XPM */\nstatic char *a[] = {\n\"1 1 1 1\",\n\"x c #ff0000\",\n\"x\"};\n");
        QTest::newRow("text") << QByteArray("hello");
        QTest::newRow("nothing") << QByteArray();
    }
    void drawingsAreNotDrawn()
    {
        QFETCH(const QByteArray, data);
        QVERIFY(decode(data, 46).isNull());
        QVERIFY(read(m_disk.write(QStringLiteral("a.svg"), data), 46).isNull());
    }

    void itsBeginningSaysWhatKindOfPictureItIs_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QByteArray>("format");
        const auto row = [](const char *name, const QByteArray &data, const char *format) {
            QTest::newRow(name) << data << QByteArray(format);
        };
        row("png", QByteArray::fromHex("89504e470d0a1a0a00"), "png");
        row("jpeg", QByteArray::fromHex("ffd8ffe0"), "jpeg");
        row("gif 87", "GIF87a..", "gif");
        row("gif 89", "GIF89a..", "gif");
        row("bmp", "BM......", "bmp");
        row("webp", "RIFF\x10\x20\x30\x40WEBPVP8 ", "webp");
        row("sound", "RIFF\x10\x20\x30\x40WAVEfmt ", "");
        row("tiff", QByteArray::fromHex("49492a0008"), "tiff");
        row("tiff, the other way round", QByteArray::fromHex("4d4d002a00"), "tiff");
        row("avif", QByteArray::fromHex("0000001c6674797061766966"), "avif");
        row("heic", QByteArray::fromHex("0000001c6674797068656963"), "heic");
        row("jxl", QByteArray::fromHex("ff0a"), "jxl");
        row("jxl in a box", QByteArray::fromHex("0000000c4a584c200d0a870a"), "jxl");
        row("a film", QByteArray::fromHex("0000001c6674797069736f6d"), "");
        row("cut", QByteArray::fromHex("89504e47"), "");
    }
    void itsBeginningSaysWhatKindOfPictureItIs()
    {
        QFETCH(const QByteArray, data);
        QFETCH(const QByteArray, format);
        QCOMPARE(rasterFormat(data), format);
    }

    void aPictureThatSaysItIsHugeIsNotUnpacked()
    {
        QVERIFY(decode(pngHeader(60'000, 60'000), 46).isNull());
        for (const QSize &size : {QSize(4096, 1), QSize(1, 4096)})
            QCOMPARE(decode(written(filled(size), "png"), 46).size(), QSize(46, 46));
        for (const QSize &size : {QSize(4097, 1), QSize(1, 4097)})
            QVERIFY(decode(written(filled(size), "png"), 46).isNull());
    }

    void tooMuchDataIsNotRead()
    {
        const qsizetype limit = qsizetype(10) * 1024 * 1024;
        const QByteArray png = written(filled({8, 8}), "png");
        const QByteArray full = png + QByteArray(limit - png.size(), '\0');
        QVERIFY(!decode(full, 46).isNull());
        QVERIFY(!read(m_disk.write(QStringLiteral("full"), full), 46).isNull());
        QVERIFY(decode(full + '\0', 46).isNull());
        QVERIFY(read(m_disk.write(QStringLiteral("over"), full + '\0'), 46).isNull());
    }

    void aPictureThatBreaksOffIsNone()
    {
        // Some versions of Qt say so, others leave that to the library.
        QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
        const auto restore = qScopeGuard([] { QLoggingCategory::setFilterRules({}); });
        const QByteArray png = written(stripes({300, 300}), "png");
        QVERIFY(decode(png.first(png.size() / 2), 46).isNull());
    }

    void whatIsNoRegularFileIsNotRead()
    {
        const QString pipe = m_disk.path(QStringLiteral("pipe.png"));
        QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
        QVERIFY(read(pipe, 46).isNull());
        QDir().mkpath(m_disk.path(QStringLiteral("folder.png")));
        QVERIFY(read(m_disk.path(QStringLiteral("folder.png")), 46).isNull());
        QVERIFY(read(m_disk.path(QStringLiteral("missing.png")), 46).isNull());
        const QString endless = m_disk.path(QStringLiteral("endless.png"));
        QCOMPARE(::symlink("/dev/zero", qPrintable(endless)), 0);
        QVERIFY(read(endless, 46).isNull());
    }

    void whatIsInAnAddressIsDecoded_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isPicture");
        const QByteArray base64 = written(filled({8, 8}), "png").toBase64();
        QTest::newRow("base64") << base64 << true;
        QTest::newRow("percent-encoded") << base64.toPercentEncoding() << true;
        QTest::newRow("with line ends") << QByteArray(base64).insert(40, "%0D%0A") << true;
        QTest::newRow("no picture") << QByteArray("QUJD") << false;
        QTest::newRow("no base64") << QByteArray("%%%") << false;
        QTest::newRow("too large") << (written(filled({8, 8}), "png") + QByteArray(10 * 1024 * 1024, 'a')).toBase64()
                                   << false;
    }

    void whatIsInAnAddressIsDecoded()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const bool, isPicture);
        const QImage picture = answerTo([&text](Pictures &pictures, const Pictures::Completion &completion) {
            return pictures.decodeBase64(text, 8, completion);
        });
        QCOMPARE(picture.isNull(), !isPicture);
    }

    /// Neither the other files nor what needs no disk.
    void aFileOnADiskThatHangsHoldsUpNothingElse()
    {
        const SecondVolume volume;
        const QByteArray png = written(filled({8, 8}), "png");
        QFile there(volume.path() + QStringLiteral("/a.png"));
        QVERIFY(there.open(QIODevice::WriteOnly) && there.write(png) == png.size());
        there.close();
        const QString here = m_disk.write(QStringLiteral("a.png"), png);
        volume.hang();
        QtPictures pictures;
        QStringList answers;
        const auto note = [&answers](const char *name) {
            return [&answers, name](const QImage &) { answers.append(QString::fromLatin1(name)); };
        };
        const auto stuck = pictures.read(there.fileName(), 8, note("there"));
        const auto file = pictures.read(here, 8, note("here"));
        const auto data = pictures.decode(png, 8, note("data"));
        QTRY_COMPARE(answers.size(), 2);
        QVERIFY(!answers.contains(QStringLiteral("there")));
        volume.goOn();
        QTRY_COMPARE(answers.last(), QStringLiteral("there"));
    }

    void aSizeThatIsAMistakeIsRefused()
    {
        const QByteArray png = written(filled({8, 8}), "png");
        for (const int side : {-1, 0, 1025})
            QVERIFY(decode(png, side).isNull());
        for (const int side : {1, 1024})
            QCOMPARE(decode(png, side).size(), QSize(side, side));
    }

    void theAnswerComesOnceFromTheEventLoopOfTheMainThread()
    {
        QtPictures pictures;
        int answers = 0;
        bool isMainThread = false;
        const auto request = pictures.decode(written(filled({8, 8}), "png"), 8, [&](const QImage &) {
            ++answers;
            isMainThread = QThread::currentThread() == qApp->thread();
        });
        QThread::msleep(50);
        QCOMPARE(answers, 0);
        QTRY_COMPARE(answers, 1);
        QVERIFY(isMainThread);
        QTest::qWait(50);
        QCOMPARE(answers, 1);
    }

    void aRequestThatIsLetGoOfIsNotAnswered()
    {
        QtPictures pictures;
        const QByteArray png = written(filled({8, 8}), "png");
        const QString path = m_disk.write(QStringLiteral("a.png"), png);
        int answers = 0;
        const auto count = [&answers](const QImage &) { ++answers; };
        auto one = pictures.decode(png, 8, count);
        auto two = pictures.read(path, 8, count);
        // They may be done already, and not told yet.
        QThread::msleep(100);
        one.reset();
        two.reset();
        QTest::qWait(100);
        QCOMPARE(answers, 0);
    }

    void aRequestMayBeLetGoOfInItsAnswer()
    {
        QtPictures pictures;
        std::unique_ptr<Pictures::Request> request;
        bool isAnswered = false;
        request = pictures.decode(written(filled({8, 8}), "png"), 8, [&, kept = QByteArray(1000, 'a')](const QImage &) {
            request.reset();
            isAnswered = kept.size() == 1000;
        });
        QTRY_VERIFY(isAnswered);
    }

private:
    using Ask = std::function<std::unique_ptr<Pictures::Request>(Pictures &, Pictures::Completion)>;

    [[nodiscard]] static QImage answerTo(const Ask &ask)
    {
        QtPictures pictures;
        std::optional<QImage> answer;
        const auto request = ask(pictures, [&answer](const QImage &picture) { answer = picture; });
        if (!QTest::qWaitFor([&answer] { return answer.has_value(); }, 30'000))
            qFatal("a picture is not answered");
        return *answer;
    }
    [[nodiscard]] static QImage decode(const QByteArray &data, int side)
    {
        return answerTo([&](Pictures &pictures, const Pictures::Completion &completion) {
            return pictures.decode(data, side, completion);
        });
    }
    [[nodiscard]] static QImage read(const QString &path, int side)
    {
        return answerTo([&](Pictures &pictures, const Pictures::Completion &completion) {
            return pictures.read(path, side, completion);
        });
    }

    IconsOnDisk m_disk;
};

MOORLINE_TEST(QtPicturesTest);

#include "QtPicturesTest.moc"

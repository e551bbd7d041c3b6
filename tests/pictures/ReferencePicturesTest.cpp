#include "ReferencePictures.h"

#include "harness/TestCase.h"

#include <QPainter>

namespace moorline::test {

namespace {

QImage square(const QRect &place)
{
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter(&image).fillRect(place, Qt::white);
    return image;
}

} // namespace

class ReferencePicturesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPictureIsItself()
    {
        const QImage picture = square({20, 20, 10, 10});
        QCOMPARE(difference(picture, picture).pixels, 0);
    }

    void whatMovedByAPixelDiffers()
    {
        // A column goes and a column comes.
        QCOMPARE(difference(square({20, 20, 10, 10}), square({21, 20, 10, 10})).pixels, 20);
    }

    void aSlightlyOtherShadeIsTheSame()
    {
        QImage one(10, 10, QImage::Format_ARGB32_Premultiplied);
        QImage other = one;
        one.fill(QColor(100, 100, 100));
        other.fill(QColor(104, 100, 100));
        QCOMPARE(difference(one, other).pixels, 0);
        other.fill(QColor(100, 100, 105));
        QCOMPARE(difference(one, other).pixels, 100);
    }

    void whatIsFaintShowsInTheMean()
    {
        const QImage picture = square({20, 20, 10, 10});
        QCOMPARE(difference(picture, picture).mean, 0.0);
        QImage dimmed = picture;
        dimmed.fill(QColor(2, 0, 0));
        QImage dark = picture;
        dark.fill(Qt::black);
        QCOMPARE(difference(dimmed, dark).mean, 2.0);
        QCOMPARE(difference(dimmed, dark).pixels, 0);
    }

    void anotherSizeDiffersWhole()
    {
        QCOMPARE(difference(QImage(2, 3, QImage::Format_RGB32), QImage(3, 2, QImage::Format_RGB32)).pixels, 6);
    }
};

MOORLINE_TEST(ReferencePicturesTest);

} // namespace moorline::test

#include "ReferencePicturesTest.moc"

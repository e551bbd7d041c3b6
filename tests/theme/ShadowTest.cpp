#include "theme/Shadow.h"

#include "harness/TestCase.h"

#include <QPainter>
#include <cmath>

namespace moorline::test {

namespace {

constexpr QRectF box(100, 100, 200, 160);

QPainterPath pathOf(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

constexpr QRectF canvas(0, 0, 400, 400);

QImage painted(Shadow &shadow, const QPainterPath &shape, qreal scale = 1, const QRectF &room = canvas)
{
    QImage image(QSize(400, 400) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    shadow.paint(painter, shape, room);
    return image;
}

double alphaAt(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y)) / 255.0;
}

} // namespace

class ShadowTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void fadesLikeAGaussianAcrossAnEdge();
    void hasItsColorAndOpacityUnderTheShape();
    void isMovedByItsOffset();
    void looksTheSameWhenPaintedAgain();
    void followsAShapeThatChanges();
    void isAsWideAtEveryScale();
    void anEmptyShapeThrowsNone();
    void fadesToNothingTowardsTheEdgesOfItsRoom();
};

void ShadowTest::fadesToNothingTowardsTheEdgesOfItsRoom()
{
    Shadow shadow(Qt::black, 22, {0, 14});
    const QRectF room = box.adjusted(0, -13, 0, 13);
    const QImage image = painted(shadow, pathOf(box), 1, room);
    const int middle = int(box.center().x());
    QCOMPARE(alphaAt(image, middle, int(room.bottom())), 0.0);
    QVERIFY(alphaAt(image, middle, int(room.bottom()) - 1) < 0.05);
    QVERIFY(alphaAt(image, middle, int(box.bottom())) > 0.5);
    QCOMPARE(alphaAt(image, int(room.left()) - 1, int(box.bottom())), 0.0);
    QVERIFY(alphaAt(image, int(room.left()), int(room.bottom()) - 6) < 0.05);
    const QImage free = painted(shadow, pathOf(box));
    QCOMPARE(alphaAt(image, int(box.left()) + 2, 180), alphaAt(free, int(box.left()) + 2, 180));
}

void ShadowTest::fadesLikeAGaussianAcrossAnEdge()
{
    Shadow shadow(Qt::black, 20, {0, 0});
    const QImage image = painted(shadow, pathOf(box));
    const int middle = int(box.center().y());
    for (const int distance : {-20, -10, -5, 0, 5, 10, 20}) {
        const double expected = 0.5 * std::erfc(distance / (10 * M_SQRT2));
        const double left = alphaAt(image, int(box.left()) - distance, middle);
        const double above = alphaAt(image, int(box.center().x()), int(box.top()) - distance);
        // Pixels are sampled at their middle, half a pixel inside.
        QVERIFY2(std::abs(left - expected) < 0.04, qPrintable(QString::number(left)));
        QVERIFY2(std::abs(above - expected) < 0.04, qPrintable(QString::number(above)));
    }
    QCOMPARE(alphaAt(image, int(box.left()) - 60, middle), 0.0);
}

void ShadowTest::hasItsColorAndOpacityUnderTheShape()
{
    Shadow shadow(QColor::fromRgbF(1, 0, 0, 0.55F), 22, {0, 0});
    const QColor center = painted(shadow, pathOf(box)).pixelColor(box.center().toPoint());
    QVERIFY(std::abs(center.alphaF() - 0.55F) < 0.01F);
    QCOMPARE(center.red(), 255);
    QCOMPARE(center.blue(), 0);
}

void ShadowTest::isMovedByItsOffset()
{
    Shadow centered(Qt::black, 22, {0, 0});
    Shadow lowered(Qt::black, 22, {0, 14});
    const QImage low = painted(lowered, pathOf(box));
    QCOMPARE(low.copy(0, 14, 400, 386), painted(centered, pathOf(box)).copy(0, 0, 400, 386));
}

void ShadowTest::looksTheSameWhenPaintedAgain()
{
    Shadow shadow(Qt::black, 22, {0, 14});
    const QImage first = painted(shadow, pathOf(box));
    QCOMPARE(painted(shadow, pathOf(box)), first);
}

void ShadowTest::followsAShapeThatChanges()
{
    const QPainterPath wider = pathOf(box.adjusted(-20, 0, 20, 0));
    Shadow reused(Qt::black, 22, {0, 14});
    Shadow fresh(Qt::black, 22, {0, 14});
    const QImage before = painted(reused, pathOf(box));
    QCOMPARE(painted(reused, wider), painted(fresh, wider));
    QCOMPARE(painted(reused, pathOf(box)), before);
}

void ShadowTest::isAsWideAtEveryScale()
{
    Shadow shadow(Qt::black, 20, {0, 0});
    const QImage plain = painted(shadow, pathOf(box));
    const QImage fine = painted(shadow, pathOf(box), 2);
    for (int x = 60; x < 140; ++x)
        QVERIFY(std::abs(alphaAt(fine, 2 * x, 360) - alphaAt(plain, x, 180)) < 0.03);
}

void ShadowTest::anEmptyShapeThrowsNone()
{
    Shadow shadow(Qt::black, 20, {0, 0});
    QImage blank(400, 400, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    QCOMPARE(painted(shadow, QPainterPath()), blank);
}

} // namespace moorline::test

using moorline::test::ShadowTest;
MOORLINE_TEST(ShadowTest);

#include "ShadowTest.moc"

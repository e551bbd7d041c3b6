#include "theme/Shapes.h"

#include "harness/TestCase.h"

#include <QLineF>
#include <QList>
#include <QTransform>
#include <cmath>

namespace moorline::test {

namespace {

/// Curvature along every cubic of the path, in order, in 1/points.
QList<qreal> curvatures(const QPainterPath &path)
{
    QList<qreal> all;
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).type != QPainterPath::CurveToElement)
            continue;
        const QPointF a = path.elementAt(i - 1);
        const QPointF b = path.elementAt(i);
        const QPointF c = path.elementAt(i + 1);
        const QPointF d = path.elementAt(i + 2);
        for (int step = 0; step <= 20; ++step) {
            const qreal t = step / 20.0;
            const qreal u = 1 - t;
            const QPointF first = 3 * u * u * (b - a) + 6 * u * t * (c - b) + 3 * t * t * (d - c);
            const QPointF second = 6 * u * (c - 2 * b + a) + 6 * t * (d - 2 * c + b);
            const qreal cross = first.x() * second.y() - first.y() * second.x();
            all.append(cross / std::pow(std::hypot(first.x(), first.y()), 3));
        }
    }
    return all;
}

} // namespace

class ShapesTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void fillsItsRectangle();
    void isTheSameInAllFourCorners();
    void theCurvatureGrowsWithoutJumps();
    void theCornersAreAsRoundAsAsked();
    void aRadiusTooLargeGivesACapsule_data();
    void aRadiusTooLargeGivesACapsule();
    void withoutARadiusItIsTheRectangle();
    void anEmptyRectangleHasNoShape();
};

void ShapesTest::fillsItsRectangle()
{
    const QRectF rect(10, 20, 300, 72);
    const QPainterPath path = continuousRoundedRect(rect, 19);
    QCOMPARE(path.boundingRect(), rect);
    QVERIFY(path.contains(rect.center()));
    for (const QPointF corner : {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()})
        QVERIFY(!path.contains(corner + (rect.center() - corner) * 0.005));
}

void ShapesTest::isTheSameInAllFourCorners()
{
    const QPainterPath path = continuousRoundedRect(QRectF(-150, -36, 300, 72), 19);
    for (qreal x = 100; x <= 150; x += 0.7) {
        for (qreal y = 0.1; y <= 36; y += 0.7) {
            const bool inside = path.contains(QPointF(x, y));
            QCOMPARE(path.contains(QPointF(-x, y)), inside);
            QCOMPARE(path.contains(QPointF(x, -y)), inside);
            QCOMPARE(path.contains(QPointF(-x, -y)), inside);
        }
    }
}

void ShapesTest::theCurvatureGrowsWithoutJumps()
{
    constexpr qreal radius = 20;
    const QList<qreal> along = curvatures(continuousRoundedRect(QRectF(0, 0, 300, 100), radius));
    QVERIFY(!along.isEmpty());
    QVERIFY(std::abs(along.first()) < 1e-9);
    QVERIFY(std::abs(along.last()) < 1e-9);
    // A plain circular corner jumps by 1 / radius where it meets the edge.
    for (qsizetype i = 1; i < along.size(); ++i)
        QVERIFY(std::abs(along.at(i) - along.at(i - 1)) < 0.2 / radius);
}

void ShapesTest::theCornersAreAsRoundAsAsked()
{
    constexpr qreal radius = 20;
    const QPainterPath path = continuousRoundedRect(QRectF(0, 0, 300, 100), radius);
    // Along the diagonal a circular corner cuts radius * (sqrt(2) - 1) off; the smooth one lies close to it.
    const qreal cut = radius * (M_SQRT2 - 1);
    const QPointF diagonal(M_SQRT1_2, M_SQRT1_2);
    QVERIFY(!path.contains(diagonal * (cut - 0.1)));
    QVERIFY(path.contains(diagonal * (cut + 0.1)));
}

void ShapesTest::aRadiusTooLargeGivesACapsule_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<qreal>("radius");

    QTest::newRow("exactly half") << QRectF(0, 0, 68, 4) << 2.0;
    QTest::newRow("more than half") << QRectF(5, 5, 68, 4) << 19.0;
    QTest::newRow("upright") << QRectF(0, 0, 4, 68) << 100.0;
    QTest::newRow("a circle") << QRectF(0, 0, 40, 40) << 20.0;
}

void ShapesTest::aRadiusTooLargeGivesACapsule()
{
    QFETCH(const QRectF, rect);
    QFETCH(const qreal, radius);

    const QPainterPath path = continuousRoundedRect(rect, radius);
    const qreal half = std::min(rect.width(), rect.height()) / 2;
    const QPointF cap = rect.topLeft() + QPointF(half, half);
    for (int degrees = 181; degrees < 270; degrees += 8) {
        const QPointF outwards = QLineF::fromPolar(1, degrees).p2();
        const QPointF direction(outwards.x(), -outwards.y());
        QVERIFY(path.contains(cap + QPointF(direction.x(), -std::abs(direction.y())) * (half * 0.998)));
        QVERIFY(!path.contains(cap + QPointF(direction.x(), -std::abs(direction.y())) * (half * 1.002)));
    }
    QCOMPARE(path.boundingRect(), rect);
}

void ShapesTest::withoutARadiusItIsTheRectangle()
{
    QPainterPath plain;
    plain.addRect(QRectF(1, 2, 30, 40));
    QCOMPARE(continuousRoundedRect(QRectF(1, 2, 30, 40), 0), plain);
}

void ShapesTest::anEmptyRectangleHasNoShape()
{
    QVERIFY(continuousRoundedRect(QRectF(1, 2, 0, 40), 5).isEmpty());
}

} // namespace moorline::test

using moorline::test::ShapesTest;
MOORLINE_TEST(ShapesTest);

#include "ShapesTest.moc"

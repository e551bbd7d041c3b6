#include "chrome/WidgetDivider.h"

#include "harness/TestCase.h"

#include <QPainter>

namespace moorline::test {

namespace {

/// A divider 72 points high, 4 points from the left edge of the picture.
QImage painted(qreal scale)
{
    WidgetDivider divider;
    divider.resize(divider.preferredWidth(), 72);
    QImage image(QSize(10, 72) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(4, 0);
    divider.paint(&painter, nullptr, nullptr);
    return image;
}

QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace

class WidgetDividerTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isOnePointWide();
    void leavesTenPointsAboveAndBelow();
    void isSharpAtEveryScale_data();
    void isSharpAtEveryScale();
    void paintsNothingWhereThereIsNoRoom();
};

void WidgetDividerTest::isOnePointWide()
{
    QCOMPARE(WidgetDivider().preferredWidth(), 1.0);
    QCOMPARE(inkOf(painted(2)).width(), 2);
}

void WidgetDividerTest::leavesTenPointsAboveAndBelow()
{
    QCOMPARE(inkOf(painted(1)), QRect(4, 10, 1, 52));
}

void WidgetDividerTest::isSharpAtEveryScale_data()
{
    QTest::addColumn<qreal>("scale");

    QTest::newRow("1") << 1.0;
    QTest::newRow("1.25") << 1.25;
    QTest::newRow("1.5") << 1.5;
    QTest::newRow("2") << 2.0;
}

void WidgetDividerTest::isSharpAtEveryScale()
{
    QFETCH(const qreal, scale);

    const QImage image = painted(scale);
    const QRect ink = inkOf(image);
    QVERIFY(!ink.isEmpty());
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        for (int x = ink.left(); x <= ink.right(); ++x)
            QCOMPARE(qAlpha(image.pixel(x, y)), 26); // white at a tenth
    }
}

void WidgetDividerTest::paintsNothingWhereThereIsNoRoom()
{
    WidgetDivider divider;
    divider.resize(1, 16);
    QImage image(10, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    divider.paint(&painter, nullptr, nullptr);
    QVERIFY(inkOf(image).isEmpty());
}

} // namespace moorline::test

using moorline::test::WidgetDividerTest;
MOORLINE_TEST(WidgetDividerTest);

#include "WidgetDividerTest.moc"

#include "platform/linux/desktop/SvgSymbols.h"

#include "harness/TestCase.h"

#include <algorithm>
#include <cstdlib>

namespace moorline::test {

namespace {

const QString frameWithBar = QStringLiteral("dock.rectangle");

QImage drawn(const QString &name, qreal pointSize, qreal scale, const QColor &color = Qt::white,
    SymbolRendering rendering = SymbolRendering::monochrome)
{
    return SvgSymbols().symbol({name, pointSize, scale, color, rendering});
}

/// The opacities along the row in the middle, from the left.
QList<int> middleRow(const QImage &image)
{
    QList<int> alphas;
    for (int x = 0; x < image.width(); ++x)
        alphas.append(qAlpha(image.pixel(x, image.height() / 2)));
    return alphas;
}

} // namespace

class SvgSymbolsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void hasEverySymbolThatIsAskedFor_data();
    void hasEverySymbolThatIsAskedFor();
    void anUnknownSymbolIsAbsent();
    void anImpossibleSizeIsAbsent_data();
    void anImpossibleSizeIsAbsent();
    void isASquareOfWholePixels_data();
    void isASquareOfWholePixels();
    void takesTheAskedColor();
    void takesTheOpacityOfTheColor();
    void theSecondaryLayerIsFainterWhenHierarchical();
    void itsOuterLinesLieOnWholePixels_data();
    void itsOuterLinesLieOnWholePixels();
};

void SvgSymbolsTest::hasEverySymbolThatIsAskedFor_data()
{
    QTest::addColumn<QString>("name");

    for (const char *name : {"arrow.up.right", "checkmark", "dock.rectangle"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void SvgSymbolsTest::hasEverySymbolThatIsAskedFor()
{
    QFETCH(const QString, name);

    const QImage image = drawn(name, 13, 2);
    int strongest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            strongest = std::max(strongest, qAlpha(image.pixel(x, y)));
    }
    QCOMPARE(strongest, 255);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
}

void SvgSymbolsTest::anUnknownSymbolIsAbsent()
{
    QVERIFY(drawn(QStringLiteral("no.such.symbol"), 13, 1).isNull());
    QVERIFY(drawn(QString(), 13, 1).isNull());
}

void SvgSymbolsTest::anImpossibleSizeIsAbsent_data()
{
    QTest::addColumn<qreal>("pointSize");

    QTest::newRow("nothing") << 0.0;
    QTest::newRow("negative") << -4.0;
    QTest::newRow("beyond any screen") << 1e9;
    QTest::newRow("not a number") << qQNaN();
}

void SvgSymbolsTest::anImpossibleSizeIsAbsent()
{
    QFETCH(const qreal, pointSize);

    QVERIFY(drawn(frameWithBar, pointSize, 1).isNull());
}

void SvgSymbolsTest::isASquareOfWholePixels_data()
{
    QTest::addColumn<qreal>("pointSize");
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<int>("side");

    QTest::newRow("10 points") << 10.0 << 1.0 << 12;
    QTest::newRow("10 points at 1.5") << 10.0 << 1.5 << 18;
    QTest::newRow("13 points") << 13.0 << 1.0 << 16;
    QTest::newRow("13 points at 1.5") << 13.0 << 1.5 << 24;
    QTest::newRow("13 points at 2") << 13.0 << 2.0 << 32;
    QTest::newRow("24 points at 2") << 24.0 << 2.0 << 58;
    QTest::newRow("an icon of 18 pixels") << 18 / 1.2 << 1.0 << 18;
    QTest::newRow("an icon of 22 pixels") << 22 / 1.2 << 1.0 << 22;
}

void SvgSymbolsTest::isASquareOfWholePixels()
{
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);
    QFETCH(const int, side);

    const QImage image = drawn(frameWithBar, pointSize, scale);
    QCOMPARE(image.size(), QSize(side, side));
    QCOMPARE(image.devicePixelRatio(), scale);
}

void SvgSymbolsTest::takesTheAskedColor()
{
    const QColor color(10, 200, 30);
    const QImage image = drawn(frameWithBar, 16, 2, color);
    const QList<int> row = middleRow(image);
    QCOMPARE(image.pixelColor(int(row.indexOf(255)), image.height() / 2), color);
}

void SvgSymbolsTest::takesTheOpacityOfTheColor()
{
    const QList<int> row = middleRow(drawn(frameWithBar, 16, 2, QColor(255, 255, 255, 102)));
    QCOMPARE(*std::max_element(row.begin(), row.end()), 102);
}

void SvgSymbolsTest::theSecondaryLayerIsFainterWhenHierarchical()
{
    const QImage plain = drawn(frameWithBar, 13, 2);
    const QImage layered = drawn(frameWithBar, 13, 2, Qt::white, SymbolRendering::hierarchical);
    const int middle = plain.height() / 2;
    const int frame = int(middleRow(plain).indexOf(255));
    QVERIFY(std::abs(qAlpha(layered.pixel(frame, middle)) - 128) <= 2);
    // The bar inside the frame, a little below the middle.
    const QPoint bar(plain.width() / 2, plain.height() * 9 / 16);
    QCOMPARE(qAlpha(plain.pixel(bar)), 255);
    QCOMPARE(qAlpha(layered.pixel(bar)), 255);
}

void SvgSymbolsTest::itsOuterLinesLieOnWholePixels_data()
{
    QTest::addColumn<qreal>("pointSize");
    QTest::addColumn<qreal>("scale");

    for (const int pointSize : {10, 11, 13, 16, 20, 24}) {
        for (const qreal scale : {1.0, 1.5, 2.0})
            QTest::addRow("%d points at %g", pointSize, scale) << qreal(pointSize) << scale;
    }
}

void SvgSymbolsTest::itsOuterLinesLieOnWholePixels()
{
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    QList<int> row = middleRow(drawn(frameWithBar, pointSize, scale));
    const auto outermost = [&row] {
        return *std::find_if(row.begin(), row.end(), [](int alpha) { return alpha > 0; });
    };
    QVERIFY(outermost() > 225);
    std::reverse(row.begin(), row.end());
    QVERIFY(outermost() > 225);
}

} // namespace moorline::test

using moorline::test::SvgSymbolsTest;
MOORLINE_TEST(SvgSymbolsTest);

#include "SvgSymbolsTest.moc"

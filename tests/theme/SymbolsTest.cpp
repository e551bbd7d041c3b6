#include "theme/Symbols.h"

#include "fakes/FakeSystem.h"
#include "harness/TestCase.h"

#include <QPainter>

namespace moorline::test {

namespace {

const QString checkmark = QStringLiteral("checkmark");

class NoImages final : public SymbolCatalogue {
public:
    [[nodiscard]] QImage symbol(const SymbolRequest &) const override { return {}; }
};

QImage canvas(qreal scale)
{
    QImage image(QSize(60, 60) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

class SymbolsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void tellsTheSizeInPoints();
    void asksForThePaintersRealScale();
    void asksForASymbolOnlyOnce();
    void tellsColorsRenderingsAndWeightsApart();
    void remembersABoundedNumber();
    void liesOnWholePixels_data();
    void liesOnWholePixels();
    void aMissingSymbolDrawsNothing();
    void anIconHasEverySizeThatIsCommonlyAskedFor();
    void anIconIsAMask();
    void theIconOfAMissingSymbolIsEmpty();
};

void SymbolsTest::tellsTheSizeInPoints()
{
    FakeSymbolCatalogue images;
    const Symbols symbols(images);
    QCOMPARE(symbols.size(checkmark, 10), QSizeF(15, 15));
}

void SymbolsTest::asksForThePaintersRealScale()
{
    FakeSymbolCatalogue images;
    const Symbols symbols(images);
    QImage image = canvas(2);
    QPainter painter(&image);
    painter.scale(1.5, 1.5);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::red);
    QCOMPARE(images.requests.first().name, checkmark);
    QCOMPARE(images.requests.first().pointSize, 10.0);
    QCOMPARE(images.requests.first().scale, 3.0);
    QCOMPARE(images.requests.first().color, QColor(Qt::red));
}

void SymbolsTest::asksForASymbolOnlyOnce()
{
    FakeSymbolCatalogue images;
    const Symbols symbols(images);
    QImage image = canvas(1);
    QPainter painter(&image);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::red);
    const qsizetype asked = images.requests.size();
    symbols.draw(painter, {5, 5}, checkmark, 10, Qt::red);
    QCOMPARE(images.requests.size(), asked);
}

void SymbolsTest::tellsColorsRenderingsAndWeightsApart()
{
    FakeSymbolCatalogue images;
    const Symbols symbols(images);
    QImage image = canvas(1);
    QPainter painter(&image);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::red);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::red, SymbolRendering::hierarchical);
    QCOMPARE(images.requests.last().rendering, SymbolRendering::hierarchical);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::red, SymbolRendering::monochrome, SymbolWeight::semibold);
    QCOMPARE(images.requests.last().weight, SymbolWeight::semibold);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::blue);
    QCOMPARE(images.requests.last().weight, SymbolWeight::regular);
    painter.end();
    QCOMPARE(image.pixelColor(5, 5), QColor(Qt::blue));
}

void SymbolsTest::remembersABoundedNumber()
{
    FakeSymbolCatalogue images;
    const Symbols symbols(images);
    const QSizeF size = symbols.size(checkmark, 10);
    for (int i = 0; i < 2000; ++i)
        QVERIFY(!symbols.size(QString::number(i), 4).isEmpty());
    images.requests.clear();
    QCOMPARE(symbols.size(checkmark, 10), size);
    QCOMPARE(images.requests.size(), 1);
}

void SymbolsTest::liesOnWholePixels_data()
{
    QTest::addColumn<qreal>("scale");

    QTest::newRow("1") << 1.0;
    QTest::newRow("1.5") << 1.5;
    QTest::newRow("2") << 2.0;
}

void SymbolsTest::liesOnWholePixels()
{
    QFETCH(const qreal, scale);

    FakeSymbolCatalogue images;
    const Symbols symbols(images);
    QImage image = canvas(scale);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    symbols.draw(painter, {7.3, 9.8}, checkmark, 13, Qt::white);
    painter.end();
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            QVERIFY(alpha == 0 || alpha == 255);
            inked += alpha == 255 ? 1 : 0;
        }
    }
    const int side = qRound(13 * 1.5 * scale);
    QCOMPARE(inked, side * side);
}

void SymbolsTest::aMissingSymbolDrawsNothing()
{
    const NoImages images;
    const Symbols symbols(images);
    QImage image = canvas(1);
    const QImage blank = image;
    QPainter painter(&image);
    symbols.draw(painter, {0, 0}, checkmark, 10, Qt::red);
    painter.end();
    QCOMPARE(image, blank);
    QVERIFY(symbols.size(checkmark, 10).isEmpty());
}

void SymbolsTest::anIconHasEverySizeThatIsCommonlyAskedFor()
{
    FakeSymbolCatalogue images;
    const QIcon icon = Symbols(images).icon(checkmark, Qt::red);
    for (const int side : {16, 18, 22, 24, 32, 48, 64}) {
        QVERIFY(icon.availableSizes().contains(QSize(side, side)));
        const QImage picture = icon.pixmap(QSize(side, side), 1).toImage();
        QCOMPARE(picture.size(), QSize(side, side));
        QCOMPARE(picture.pixelColor(side / 2, side / 2), QColor(Qt::red));
    }
}

void SymbolsTest::anIconIsAMask()
{
    FakeSymbolCatalogue images;
    QVERIFY(Symbols(images).icon(checkmark, Qt::red).isMask());
}

void SymbolsTest::theIconOfAMissingSymbolIsEmpty()
{
    const NoImages images;
    QVERIFY(Symbols(images).icon(checkmark, Qt::red).availableSizes().isEmpty());
}

} // namespace moorline::test

using moorline::test::SymbolsTest;
MOORLINE_TEST(SymbolsTest);

#include "SymbolsTest.moc"

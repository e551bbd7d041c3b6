#include "theme/Color.h"

#include "harness/TestCase.h"

namespace moorline::test {

class ColorTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void hexadecimalTextBecomesAColor_data();
    void hexadecimalTextBecomesAColor();
    void colorsAreInSrgb();
    void everyByteSurvivesTheRoundTrip();
    void theOpacityIsDroppedFromTheText();
    void otherColorModelsAreWrittenAsRgb();
    void componentsAreRoundedToTheNearestByte();
};

void ColorTest::hexadecimalTextBecomesAColor_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");

    const QColor orange(0xff, 0x8a, 0x4c);
    QTest::newRow("with a number sign") << QStringLiteral("#ff8a4c") << orange;
    QTest::newRow("without one") << QStringLiteral("ff8a4c") << orange;
    QTest::newRow("in upper case") << QStringLiteral("#FF8A4C") << orange;
    QTest::newRow("with spaces around") << QStringLiteral("  #ff8a4c ") << orange;
    QTest::newRow("with newlines around") << QStringLiteral("\n\tff8a4c\r\n") << orange;
    QTest::newRow("with opacity") << QStringLiteral("#14141680") << QColor(0x14, 0x14, 0x16, 0x80);
    QTest::newRow("fully transparent") << QStringLiteral("ffffff00") << QColor(255, 255, 255, 0);
    QTest::newRow("six letters that are no digits") << QStringLiteral("orange") << QColor(0, 0, 0);
    QTest::newRow("eight letters that are no digits") << QStringLiteral("#notcolor").left(9) << QColor(0, 0, 0, 0);
    QTest::newRow("empty") << QString() << QColor(Qt::white);
    QTest::newRow("only a number sign") << QStringLiteral("#") << QColor(Qt::white);
    QTest::newRow("three digits") << QStringLiteral("#f00") << QColor(Qt::white);
    QTest::newRow("five digits") << QStringLiteral("#ff8a4") << QColor(Qt::white);
    QTest::newRow("seven digits") << QStringLiteral("#ff8a4c0") << QColor(Qt::white);
    QTest::newRow("nine digits") << QStringLiteral("#ff8a4c000") << QColor(Qt::white);
    QTest::newRow("two number signs") << QStringLiteral("##ff8a4") << QColor(0, 0, 0);
}

void ColorTest::hexadecimalTextBecomesAColor()
{
    QFETCH(const QString, text);
    QFETCH(const QColor, color);

    QCOMPARE(colorFromHex(text).rgba(), color.rgba());
}

void ColorTest::colorsAreInSrgb()
{
    QCOMPARE(colorFromHex(QStringLiteral("#ff8a4c")).spec(), QColor::Rgb);
}

void ColorTest::everyByteSurvivesTheRoundTrip()
{
    for (int byte = 0; byte < 256; ++byte) {
        const QString pair = QStringLiteral("%1").arg(byte, 2, 16, QChar(u'0'));
        const QString text = u'#' + pair + QStringLiteral("7f") + pair;
        QCOMPARE(hexString(colorFromHex(text)), text);
    }
    QCOMPARE(hexString(colorFromHex(QStringLiteral("#ff8a4c"))), QStringLiteral("#ff8a4c"));
}

void ColorTest::theOpacityIsDroppedFromTheText()
{
    QCOMPARE(hexString(QColor(1, 2, 3, 4)), QStringLiteral("#010203"));
}

void ColorTest::otherColorModelsAreWrittenAsRgb()
{
    QCOMPARE(hexString(QColor::fromHsv(120, 255, 255)), QStringLiteral("#00ff00"));
    QCOMPARE(hexString(QColor::fromCmyk(0, 255, 255, 0)), QStringLiteral("#ff0000"));
}

void ColorTest::componentsAreRoundedToTheNearestByte()
{
    QCOMPARE(hexString(QColor::fromRgbF(0.5F, 100.4F / 255, 100.6F / 255)), QStringLiteral("#806465"));
}

} // namespace moorline::test

using moorline::test::ColorTest;
MOORLINE_TEST(ColorTest);

#include "ColorTest.moc"

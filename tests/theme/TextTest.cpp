#include "theme/Text.h"

#include "harness/TestCase.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPainter>
#include <cmath>

namespace moorline::test {

namespace {

constexpr TextStyle plain{.size = 13};
constexpr TextStyle counting{.size = 20, .weight = QFont::DemiBold, .monospacedDigits = true};
const QString title = QStringLiteral("Moorings at low water");

QImage painted(const QString &text, const TextStyle &style, QPointF topLeft = {10, 10}, qreal scale = 1)
{
    QImage image(QSize(300, 60) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawText(painter, topLeft, text, style, Qt::white);
    return image;
}

/// In points.
QRectF inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 40)
                ink |= QRect(x, y, 1, 1);
        }
    }
    const qreal scale = image.devicePixelRatio();
    return {QPointF(ink.topLeft()) / scale, QSizeF(ink.size()) / scale};
}

/// Sets the application's font family for as long as it lives.
class FamilyScope final {
public:
    explicit FamilyScope(const QString &family)
        : m_previous(QGuiApplication::font())
    {
        QGuiApplication::setFont(QFont(family));
    }
    ~FamilyScope() { QGuiApplication::setFont(m_previous); }
    Q_DISABLE_COPY_MOVE(FamilyScope)

private:
    QFont m_previous;
};

} // namespace

class TextTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void usesTheSystemFontInTheAskedLook();
    void theInkStaysInTheMeasuredBox_data();
    void theInkStaysInTheMeasuredBox();
    void theMeasureIsTheWidthThatIsDrawn();
    void trackingFollowsEachLetter();
    void everyNumberOfOneLengthIsAsWide_data();
    void everyNumberOfOneLengthIsAsWide();
    void theColonStaysWhereItIsWhileDigitsChange();
    void aLetterIsDrawnAlikeWhereverItStands();
    void drawsInTheAskedColor();
    void leavesThePainterAsItWas();
    void textThatFitsIsNotShortened();
    void shortenedTextFitsAndEndsWithAnEllipsis();
    void noSpaceStandsBeforeTheEllipsis();
    void aLetterOfSeveralCodePointsIsNeverCut();
    void withoutRoomForTheEllipsisThereIsNoText();
};

void TextTest::usesTheSystemFontInTheAskedLook()
{
    const QFont styled = font({.size = 22, .weight = QFont::DemiBold});
    QCOMPARE(styled.family(), QGuiApplication::font().family());
    QCOMPARE(styled.pixelSize(), 22);
    QCOMPARE(styled.weight(), QFont::DemiBold);
}

void TextTest::theInkStaysInTheMeasuredBox_data()
{
    QTest::addColumn<qreal>("scale");

    QTest::newRow("1") << 1.0;
    QTest::newRow("1.5") << 1.5;
    QTest::newRow("2") << 2.0;
}

void TextTest::theInkStaysInTheMeasuredBox()
{
    QFETCH(const qreal, scale);

    for (const TextStyle &style : {plain, counting}) {
        const QString text = QStringLiteral("Hamburg 12:48");
        const QRectF ink = inkOf(painted(text, style, {10, 10}, scale));
        const QRectF box(QPointF(10, 10), textSize(text, style));
        QVERIFY(!ink.isEmpty());
        QVERIFY(box.adjusted(-1, -1, 1, 1).contains(ink));
        QVERIFY(ink.width() > box.width() - 5);
    }
}

void TextTest::theMeasureIsTheWidthThatIsDrawn()
{
    const QString half = QStringLiteral("Low tide 7");
    const QString doubled = half + half;
    for (const TextStyle &style : {plain, counting}) {
        const qreal measured = textSize(doubled, style).width() - textSize(half, style).width();
        const qreal drawn = inkOf(painted(doubled, style)).width() - inkOf(painted(half, style)).width();
        QVERIFY(std::abs(measured - drawn) <= 1.5);
    }
}

void TextTest::trackingFollowsEachLetter()
{
    const TextStyle tracked{.size = 10, .tracking = 0.8};
    const TextStyle untracked{.size = 10};
    const qreal wider =
        textSize(QStringLiteral("TUE"), tracked).width() - textSize(QStringLiteral("TUE"), untracked).width();
    QVERIFY(std::abs(wider - 2.4) < 0.05);
}

void TextTest::everyNumberOfOneLengthIsAsWide_data()
{
    QTest::addColumn<QString>("family");

    for (const QString &family : QFontDatabase::families())
        QTest::newRow(qPrintable(family)) << family;
}

void TextTest::everyNumberOfOneLengthIsAsWide()
{
    QFETCH(const QString, family);

    const FamilyScope scope(family);
    const qreal width = textSize(QStringLiteral("11:11:11"), counting).width();
    for (const QString &time : {QStringLiteral("20:48:36"), QStringLiteral("17:59:07")})
        QCOMPARE(textSize(time, counting).width(), width);
}

void TextTest::theColonStaysWhereItIsWhileDigitsChange()
{
    for (const QString &family : QFontDatabase::families()) {
        const FamilyScope scope(family);
        const QRectF alone = inkOf(painted(QStringLiteral("  :"), counting));
        if (alone.isEmpty())
            continue; // a font of pictures
        const qreal before = textSize(QStringLiteral("11"), counting).width();
        QCOMPARE(textSize(QStringLiteral("48"), counting).width(), before);
        QCOMPARE(textSize(QStringLiteral("48:"), counting), textSize(QStringLiteral("11:"), counting));
    }
}

void TextTest::aLetterIsDrawnAlikeWhereverItStands()
{
    const QString letter = QStringLiteral("8");
    const QImage reference = painted(letter, counting, {10, 10});
    for (const qreal shift : {0.2, 0.4, -0.3})
        QCOMPARE(painted(letter, counting, {10 + shift, 10}), reference);
    QCOMPARE(painted(letter, counting, {10.8, 10}).copy(1, 0, 299, 60), reference.copy(0, 0, 299, 60));
}

void TextTest::drawsInTheAskedColor()
{
    QImage image(300, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawText(painter, {10, 10}, QStringLiteral("\u2588\u2588"), {.size = 20}, QColor(10, 200, 30));
    painter.end();
    const QPoint inside = inkOf(image).center().toPoint();
    QCOMPARE(image.pixelColor(inside), QColor(10, 200, 30));
}

void TextTest::leavesThePainterAsItWas()
{
    QImage image(300, 60, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    const QPen pen = painter.pen();
    const QFont before = painter.font();
    drawText(painter, {10, 10}, title, counting, Qt::red);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.font(), before);
}

void TextTest::textThatFitsIsNotShortened()
{
    QCOMPARE(elided(title, plain, textSize(title, plain).width()), title);
    QCOMPARE(elided(QString(), plain, 0), QString());
}

void TextTest::shortenedTextFitsAndEndsWithAnEllipsis()
{
    const int whole = int(textSize(title, plain).width());
    const int ellipsis = int(textSize(QStringLiteral("\u2026"), plain).width()) + 1;
    for (int width = whole - 1; width >= ellipsis; --width) {
        const QString shortened = elided(title, plain, width);
        QVERIFY(shortened.endsWith(u'\u2026'));
        QVERIFY(title.startsWith(shortened.chopped(1)));
        QVERIFY(textSize(shortened, plain).width() <= width);
    }
}

void TextTest::noSpaceStandsBeforeTheEllipsis()
{
    const QString text = QStringLiteral("Hi           there");
    const qreal width = textSize(QStringLiteral("Hi       \u2026"), plain).width();
    QCOMPARE(elided(text, plain, width), QStringLiteral("Hi\u2026"));
}

void TextTest::aLetterOfSeveralCodePointsIsNeverCut()
{
    const QString letter = QStringLiteral("e\u0301\u0323");
    const QString text = letter.repeated(20);
    for (qreal width = 20; width < textSize(text, plain).width(); width += 3) {
        const QString kept = elided(text, plain, width).chopped(1);
        QCOMPARE(kept.size() % letter.size(), 0);
    }
}

void TextTest::withoutRoomForTheEllipsisThereIsNoText()
{
    QCOMPARE(elided(title, plain, 1), QString());
    QCOMPARE(elided(title, plain, -5), QString());
}

} // namespace moorline::test

using moorline::test::TextTest;
MOORLINE_TEST(TextTest);

#include "TextTest.moc"

#include "platform/linux/desktop/SvgSymbols.h"

#include "harness/TestCase.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace moorline::test {

namespace {

constexpr std::array names{
    "sun.max.fill",
    "moon.stars.fill",
    "cloud.sun.fill",
    "cloud.moon.fill",
    "cloud.fill",
    "cloud.fog.fill",
    "cloud.drizzle.fill",
    "cloud.sleet.fill",
    "cloud.rain.fill",
    "cloud.heavyrain.fill",
    "cloud.snow.fill",
    "cloud.bolt.fill",
    "cloud.bolt.rain.fill",
};

constexpr int solid = 255;
/// What a layer at half opacity comes to, with one for rounding.
constexpr int halfSolid = 128 + 1;
/// So faint that nobody sees it.
constexpr int faint = 16;

/// 20 pixels to each unit of the artwork, so that fitting it to whole pixels moves nothing.
constexpr int pixelsPerUnit = 20;
constexpr qreal largePointSize = 16 * pixelsPerUnit / 1.2;

QImage drawn(const QString &name, qreal pointSize, qreal scale, SymbolRendering rendering)
{
    return SvgSymbols().symbol({name, pointSize, scale, Qt::white, rendering});
}

QImage plain(const QString &name, qreal pointSize, qreal scale)
{
    return drawn(name, pointSize, scale, SymbolRendering::monochrome);
}

QImage layered(const QString &name, qreal pointSize, qreal scale)
{
    return drawn(name, pointSize, scale, SymbolRendering::hierarchical);
}

int alpha(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

/// The smallest rectangle that holds all that can be seen.
QRect ink(const QImage &image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (alpha(image, x, y) > faint)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

int strongestOnBorder(const QImage &image)
{
    int strongest = 0;
    const int last = image.width() - 1;
    for (int i = 0; i <= last; ++i) {
        strongest =
            std::max({strongest, alpha(image, i, 0), alpha(image, i, last), alpha(image, 0, i), alpha(image, last, i)});
    }
    return strongest;
}

/// How many pixels a person could tell apart.
int differences(const QImage &one, const QImage &other)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += std::abs(alpha(one, x, y) - alpha(other, x, y)) > 50 ? 1 : 0;
    }
    return count;
}

QList<int> solidColumns(const QImage &image, int y)
{
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x) {
        if (alpha(image, x, y) >= solid - faint)
            columns.append(x);
    }
    return columns;
}

/// The lowest row in which anything is solid: where a cloud stands.
int lowestSolidRow(const QImage &image)
{
    int y = image.height() - 1;
    while (y >= 0 && solidColumns(image, y).isEmpty())
        --y;
    return y;
}

/// Whether anything of the secondary layer is within half a unit of this point, across or up and down.
bool secondaryIsNear(const QImage &image, int x, int y)
{
    for (int distance = 1; distance <= pixelsPerUnit / 2; ++distance) {
        for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            const QPoint near = QPoint(x, y) + step * distance;
            if (image.valid(near) && std::abs(qAlpha(image.pixel(near)) - solid / 2) <= 2
                && std::abs(qAlpha(image.pixel(near + step)) - solid / 2) <= 2)
                return true;
        }
    }
    return false;
}

void addNames()
{
    QTest::addColumn<QString>("name");

    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void addSizes()
{
    QTest::addColumn<qreal>("pointSize");
    QTest::addColumn<qreal>("scale");

    for (const int pointSize : {13, 21}) {
        for (const int scale : {1, 2})
            QTest::addRow("%d points at %d", pointSize, scale) << qreal(pointSize) << qreal(scale);
    }
}

/// Those of the names that begin so.
void addNamesAtSizes(const QString &beginning = {})
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qreal>("pointSize");
    QTest::addColumn<qreal>("scale");

    for (const char *latinName : names) {
        const QString name = QString::fromLatin1(latinName);
        if (name.startsWith(beginning)) {
            for (const int pointSize : {13, 21}) {
                for (const int scale : {1, 2})
                    QTest::addRow("%s, %d points at %d", latinName, pointSize, scale)
                        << name << qreal(pointSize) << qreal(scale);
            }
        }
    }
}

} // namespace

class WeatherSymbolsTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isThere_data() { addNamesAtSizes(); }
    void isThere();
    void isNotCutOff_data() { addNamesAtSizes(); }
    void isNotCutOff();
    void isLevelWithItsNeighbours_data() { addNamesAtSizes(); }
    void isLevelWithItsNeighbours();
    void aCloudStandsOnAWholePixel_data() { addNamesAtSizes(QStringLiteral("cloud.")); }
    void aCloudStandsOnAWholePixel();
    void hasASecondLayerUnlessItIsBareCloud_data() { addNamesAtSizes(); }
    void hasASecondLayerUnlessItIsBareCloud();
    void noTwoLookAlike_data() { addSizes(); }
    void noTwoLookAlike();
    void nothingTranslucentOverlaps_data() { addNames(); }
    void nothingTranslucentOverlaps();
    void theLayersStandApart_data() { addNames(); }
    void theLayersStandApart();
};

void WeatherSymbolsTest::isThere()
{
    QFETCH(const QString, name);
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    QVERIFY(lowestSolidRow(layered(name, pointSize, scale)) > 0);
}

void WeatherSymbolsTest::isNotCutOff()
{
    QFETCH(const QString, name);
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    QVERIFY(strongestOnBorder(plain(name, pointSize, scale)) <= faint);
}

void WeatherSymbolsTest::isLevelWithItsNeighbours()
{
    QFETCH(const QString, name);
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    const QImage image = plain(name, pointSize, scale);
    const QRect bounds = ink(image);
    const int above = bounds.top();
    const int below = image.height() - 1 - bounds.bottom();
    QVERIFY2(std::abs(above - below) <= 2 * scale, qPrintable(QStringLiteral("%1, %2").arg(above).arg(below)));
}

void WeatherSymbolsTest::aCloudStandsOnAWholePixel()
{
    QFETCH(const QString, name);
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    const QImage image = layered(name, pointSize, scale);
    const int row = lowestSolidRow(image);
    const QList<int> columns = solidColumns(image, row);
    const auto clear =
        std::count_if(columns.begin(), columns.end(), [&](int x) { return alpha(image, x, row + 1) <= faint; });
    // A bolt may go on below.
    QVERIFY(columns.size() >= image.width() / 8);
    QVERIFY(clear >= columns.size() / 2);
}

void WeatherSymbolsTest::hasASecondLayerUnlessItIsBareCloud()
{
    QFETCH(const QString, name);
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    const bool isLayered = plain(name, pointSize, scale) != layered(name, pointSize, scale);
    QCOMPARE(isLayered, name != QStringLiteral("cloud.fill"));
}

void WeatherSymbolsTest::noTwoLookAlike()
{
    QFETCH(const qreal, pointSize);
    QFETCH(const qreal, scale);

    for (const char *one : names) {
        const QImage image = layered(QString::fromLatin1(one), pointSize, scale);
        for (const char *other : names) {
            const int count = differences(image, layered(QString::fromLatin1(other), pointSize, scale));
            QVERIFY2(one == other || count >= 6 * scale,
                qPrintable(QStringLiteral("%1: %2 and %3").arg(count).arg(QLatin1String(one), QLatin1String(other))));
        }
    }
}

void WeatherSymbolsTest::nothingTranslucentOverlaps()
{
    QFETCH(const QString, name);

    const QImage image = layered(name, largePointSize, 1);
    const QImage whole = plain(name, largePointSize, 1);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (alpha(whole, x, y) == solid)
                QVERIFY(alpha(image, x, y) == solid || alpha(image, x, y) <= halfSolid);
        }
    }
}

void WeatherSymbolsTest::theLayersStandApart()
{
    QFETCH(const QString, name);

    const QImage image = layered(name, largePointSize, 1);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            QVERIFY(alpha(image, x, y) != solid || !secondaryIsNear(image, x, y));
    }
}

} // namespace moorline::test

using moorline::test::WeatherSymbolsTest;
MOORLINE_TEST(WeatherSymbolsTest);

#include "WeatherSymbolsTest.moc"

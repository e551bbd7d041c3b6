#include "theme/Theme.h"

#include "harness/TestCase.h"

#include <cmath>

namespace moorline::test {

class ThemeTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyColorIsAsItIsWritten_data();
    void everyColorIsAsItIsWritten();
};

void ThemeTest::everyColorIsAsItIsWritten_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("opacity");

    const QString white = QStringLiteral("#ffffff");
    QTest::newRow("the pill") << Theme::pillFill << QStringLiteral("#141416") << 0.9;
    QTest::newRow("its outline") << Theme::pillStroke << white << 0.1;
    QTest::newRow("text of the first order") << Theme::primaryText << white << 1.0;
    QTest::newRow("of the second") << Theme::secondaryText << white << 0.5;
    QTest::newRow("of the third") << Theme::tertiaryText << white << 0.4;
    QTest::newRow("a divider") << Theme::divider << white << 0.1;
    QTest::newRow("the weekday") << Theme::calendarWeekday << QStringLiteral("#ff6b5e") << 1.0;
    QTest::newRow("the year that has passed") << Theme::yearProgress << QStringLiteral("#ff8a4c") << 1.0;
}

void ThemeTest::everyColorIsAsItIsWritten()
{
    QFETCH(const QColor, color);
    QFETCH(const QString, name);
    QFETCH(const double, opacity);

    QCOMPARE(color.spec(), QColor::Rgb);
    QCOMPARE(color.name(), name);
    QVERIFY(std::abs(double(color.alphaF()) - opacity) < 1e-4);
}

} // namespace moorline::test

using moorline::test::ThemeTest;
MOORLINE_TEST(ThemeTest);

#include "ThemeTest.moc"

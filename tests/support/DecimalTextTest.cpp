#include "support/DecimalText.h"

#include "harness/TestCase.h"

#include <QRandomGenerator>
#include <limits>

using namespace moorline;

class DecimalTextTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void textIsTheShortestWithAFraction_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0.0 << QStringLiteral("0.0");
        QTest::newRow("1") << 1.0 << QStringLiteral("1.0");
        QTest::newRow("a half") << 0.5 << QStringLiteral("0.5");
        QTest::newRow("a quarter") << 0.25 << QStringLiteral("0.25");
        QTest::newRow("a tenth") << 0.1 << QStringLiteral("0.1");
        QTest::newRow("three tenths") << 0.3 << QStringLiteral("0.3");
        QTest::newRow("sum that is no three tenths") << 0.1 + 0.2 << QStringLiteral("0.30000000000000004");
        QTest::newRow("ten") << 10.0 << QStringLiteral("10.0");
        QTest::newRow("a hundred") << 100.0 << QStringLiteral("100.0");
        QTest::newRow("negative") << -2.5 << QStringLiteral("-2.5");
        QTest::newRow("a third") << 1.0 / 3 << QStringLiteral("0.3333333333333333");
    }

    void textIsTheShortestWithAFraction()
    {
        QFETCH(double, value);
        QTEST(decimalText(value), "text");
    }

    void textReadsBackAsTheSameNumber()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 2000; ++round) {
            const double value = random.generateDouble() * std::pow(10, random.bounded(-6, 7));
            QCOMPARE(decimalText(value).toDouble(), value);
        }
        QCOMPARE(decimalText(std::numeric_limits<double>::max()).toDouble(), std::numeric_limits<double>::max());
    }

    void localeHasNoSay()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const QString text = decimalText(1234.5);
        QLocale::setDefault(before);
        QCOMPARE(text, QStringLiteral("1234.5"));
    }
};

MOORLINE_TEST(DecimalTextTest);
#include "DecimalTextTest.moc"

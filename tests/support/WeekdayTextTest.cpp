#include "support/WeekdayText.h"

#include "harness/LocaleScope.h"
#include "harness/TestCase.h"

namespace moorline::test {

class WeekdayTextTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isWrittenInTheUsersLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");

        QTest::newRow("American") << QStringLiteral("en_US") << QStringLiteral("TUE");
        QTest::newRow("German") << QStringLiteral("de_DE") << QStringLiteral("DI.");
        QTest::newRow("French") << QStringLiteral("fr_FR") << QStringLiteral("MAR.");
        QTest::newRow("Turkish") << QStringLiteral("tr_TR") << QStringLiteral("SAL");
        QTest::newRow("Japanese") << QStringLiteral("ja_JP") << QStringLiteral("火");
    }

    void isWrittenInTheUsersLanguage()
    {
        QFETCH(const QString, locale);
        QFETCH(const QString, text);

        const LocaleScope scope(locale);
        QCOMPARE(weekdayString(QDate(2025, 3, 4)), text);
    }
};

MOORLINE_TEST(WeekdayTextTest);

} // namespace moorline::test

#include "WeekdayTextTest.moc"

#include "harness/TestCase.h"
#include "settings/Settings.h"

#include <QProcess>

using namespace moorline;

class SystemClockFormatTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theLocaleDecides_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("en_US.UTF-8") << QByteArray("12h");
        QTest::newRow("en_AU.UTF-8") << QByteArray("12h");
        QTest::newRow("ko_KR.UTF-8") << QByteArray("12h");
        QTest::newRow("hi_IN.UTF-8") << QByteArray("12h");
        // The part of the day is "B" there, which knows of dawn and midday.
        QTest::newRow("zh_TW.UTF-8") << QByteArray("12h");
        QTest::newRow("zh_CN.UTF-8") << QByteArray("24h");
        QTest::newRow("en_GB.UTF-8") << QByteArray("24h");
        QTest::newRow("de_DE.UTF-8") << QByteArray("24h");
        QTest::newRow("fr_CA.UTF-8") << QByteArray("24h");
        QTest::newRow("ja_JP.UTF-8") << QByteArray("24h");
        QTest::newRow("bg_BG.UTF-8") << QByteArray("24h");
    }

    void theLocaleDecides()
    {
        QFETCH(QByteArray, format);
        QCOMPARE(formatIn({QStringLiteral("LC_ALL=") + QString::fromUtf8(QTest::currentDataTag())}), format);
    }

    void theLocaleOfTimesCountsNotTheLanguage()
    {
        QCOMPARE(
            formatIn({QStringLiteral("LANG=en_US.UTF-8"), QStringLiteral("LC_TIME=de_DE.UTF-8")}), QByteArray("24h"));
        QCOMPARE(
            formatIn({QStringLiteral("LANG=de_DE.UTF-8"), QStringLiteral("LC_TIME=en_US.UTF-8")}), QByteArray("12h"));
    }

private:
    /// What a program that runs with just these variables finds.
    static QByteArray formatIn(const QStringList &environment)
    {
        QProcess helper;
        helper.setEnvironment(environment);
        helper.start(QStringLiteral(SETTINGS_HELPER), {QStringLiteral("clock-format")});
        helper.waitForFinished();
        return helper.readAllStandardOutput().trimmed();
    }
};

MOORLINE_TEST(SystemClockFormatTest);
#include "SystemClockFormatTest.moc"

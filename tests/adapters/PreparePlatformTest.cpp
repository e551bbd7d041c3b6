#include "platform/Platform.h"

#include "EntriesOnDisk.h"
#include "harness/TestCase.h"

#include <QGuiApplication>

using namespace moorline;
using namespace moorline::test;

class PreparePlatformTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        m_display = qgetenv("DISPLAY");
        m_chosen = qgetenv("QT_QPA_PLATFORM");
        QVERIFY(!m_display.isEmpty());
    }

    void cleanupTestCase()
    {
        qputenv("DISPLAY", m_display);
        qputenv("QT_QPA_PLATFORM", m_chosen);
    }

    void drawsOnTheDisplayWhereThereIsOne_data()
    {
        QTest::addColumn<QByteArray>("chosen");
        QTest::addColumn<bool>("hasDisplay");
        QTest::addColumn<DisplayNeed>("need");
        QTest::addColumn<bool>("goesOn");
        QTest::addColumn<QByteArray>("platform");
        const QByteArray xcb("xcb");
        const QByteArray offscreen("offscreen");
        QTest::newRow("a display") << QByteArray() << true << DisplayNeed::required << true << xcb;
        QTest::newRow("a display for a picture") << QByteArray() << true << DisplayNeed::optional << true << xcb;
        QTest::newRow("a Wayland session with X")
            << QByteArray("wayland") << true << DisplayNeed::required << true << xcb;
        QTest::newRow("a list of platforms")
            << QByteArray("wayland;xcb") << true << DisplayNeed::required << true << xcb;
        QTest::newRow("offscreen by choice") << offscreen << true << DisplayNeed::required << true << offscreen;
        QTest::newRow("no display, a picture") << QByteArray() << false << DisplayNeed::optional << true << offscreen;
        QTest::newRow("no X, a picture") << QByteArray("wayland") << false << DisplayNeed::optional << true
                                         << offscreen;
        QTest::newRow("no display, the bar") << QByteArray() << false << DisplayNeed::required << false << QByteArray();
        QTest::newRow("no X, the bar") << xcb << false << DisplayNeed::required << false << xcb;
    }

    void drawsOnTheDisplayWhereThereIsOne()
    {
        QFETCH(QByteArray, chosen);
        QFETCH(bool, hasDisplay);
        QFETCH(DisplayNeed, need);
        qputenv("DISPLAY", hasDisplay ? m_display : QByteArray(":4711"));
        qputenv("QT_QPA_PLATFORM", chosen);
        QTEST(preparePlatform(need).has_value(), "goesOn");
        QTEST(qgetenv("QT_QPA_PLATFORM"), "platform");
    }

    void asksTheDesktopForNoTheme()
    {
        QGuiApplication::setDesktopSettingsAware(true);
        QVERIFY(preparePlatform(DisplayNeed::optional));
        QVERIFY(!QGuiApplication::desktopSettingsAware());
    }

    void whatIsStartedFindsTheEnvironmentOfTheStart()
    {
        const EntriesOnDisk disk;
        const QString found = disk.path(QStringLiteral("environment"));
        const QString program = disk.writeProgram(disk.path(QStringLiteral("program")),
            "#!/bin/sh\nenv -0 >\"$0.part\"\nmv \"$0.part\" \"" + QFile::encodeName(found) + "\"\n");
        const QString entry = disk.writeEntry(disk.own(QStringLiteral("pad")), "Name=Pad\nExec=" + program.toUtf8());
        qputenv("DISPLAY", m_display);
        qunsetenv("QT_QPA_PLATFORM");
        qputenv("MOORLINE_MARK", "1");
        const auto preparation = preparePlatform(DisplayNeed::required);
        QVERIFY(preparation);
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
        const Platform platform = createPlatform(*preparation);
        platform.workspace->open(entry, {}, {});
        QTRY_VERIFY(QFile::exists(found));
        QFile file(found);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray environment = file.readAll();
        QVERIFY(environment.contains("DISPLAY=" + m_display));
        QVERIFY(!environment.contains("QT_QPA_PLATFORM"));
        QVERIFY(!environment.contains("MOORLINE_MARK"));
        // Nothing was done with a hand, so the server's clock says when.
        const qsizetype time = environment.indexOf("_TIME");
        QVERIFY(time > 0 && environment.at(time + 5) != '0');
        qunsetenv("MOORLINE_MARK");
    }

private:
    QByteArray m_display;
    QByteArray m_chosen;
};

MOORLINE_TEST(PreparePlatformTest);

#include "PreparePlatformTest.moc"

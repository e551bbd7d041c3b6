#include "platform/Platform.h"

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
        QTEST(preparePlatform(need), "goesOn");
        QTEST(qgetenv("QT_QPA_PLATFORM"), "platform");
    }

    void asksTheDesktopForNoTheme()
    {
        QGuiApplication::setDesktopSettingsAware(true);
        QVERIFY(preparePlatform(DisplayNeed::optional));
        QVERIFY(!QGuiApplication::desktopSettingsAware());
    }

private:
    QByteArray m_display;
    QByteArray m_chosen;
};

MOORLINE_TEST(PreparePlatformTest);

#include "PreparePlatformTest.moc"

#include "platform/linux/icons/SessionIconTheme.h"

#include "SettingsManager.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/x11/DesktopSettingsClient.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/qt/QtFileWatch.h"

#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace moorline::test {

using namespace std::chrono_literals;

namespace {

GObjectPointer<GSettings> gnome()
{
    return GObjectPointer<GSettings>(g_settings_new("org.gnome.desktop.interface"));
}

void setGnomeTheme(const char *name)
{
    QVERIFY(g_settings_set_string(gnome().get(), "icon-theme", name));
    g_settings_sync();
}

} // namespace

/// Under an X server of its own, with the settings of GNOME installed.
class SessionIconThemeTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        setGnomeTheme("Gnomish");
        m_connection = XConnection::open();
        QVERIFY(m_connection);
        m_settings = std::make_unique<DesktopSettingsClient>(*m_connection, m_clock);
    }

    void cleanup()
    {
        m_settings.reset();
        m_connection.reset();
        TestCase::cleanup();
    }

    void theManagerOfTheDesktopHasTheFirstWord()
    {
        const SettingsManager manager("Papirus");
        m_settings = std::make_unique<DesktopSettingsClient>(*m_connection, m_clock);
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QCOMPARE(theme.name(), QStringLiteral("Papirus"));
    }

    void withoutOneGnomesSettingsSpeak()
    {
        QCOMPARE(SessionIconTheme(m_settings.get(), m_fileWatch, {}).name(), QStringLiteral("Gnomish"));
        QCOMPARE(SessionIconTheme(nullptr, m_fileWatch, {}).name(), QStringLiteral("Gnomish"));
    }

    void aChangeOfTheManagersIsFollowed()
    {
        const SettingsManager manager("Papirus");
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QTRY_COMPARE(theme.name(), QStringLiteral("Papirus"));
        QSignalSpy changed(&theme, &SessionIconTheme::nameChanged);
        manager.setIconTheme("Breeze");
        QTRY_COMPARE(theme.name(), QStringLiteral("Breeze"));
        manager.setIconTheme("Breeze");
        manager.setIconTheme("Oxygen");
        QTRY_COMPARE(theme.name(), QStringLiteral("Oxygen"));
        QCOMPARE(changed.size(), 2);
    }

    void aManagerThatComesOrGoesIsNoticed()
    {
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QCOMPARE(theme.name(), QStringLiteral("Gnomish"));
        auto manager = std::make_unique<SettingsManager>("Papirus");
        QTRY_COMPARE(theme.name(), QStringLiteral("Papirus"));
        const SettingsManager successor("Breeze");
        QTRY_COMPARE(theme.name(), QStringLiteral("Breeze"));
        manager.reset();
        successor.setIconTheme("Oxygen");
        QTRY_COMPARE(theme.name(), QStringLiteral("Oxygen"));
    }

    void aManagerThatDiesLeavesTheWordToGnome()
    {
        auto manager = std::make_unique<SettingsManager>("Papirus");
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QTRY_COMPARE(theme.name(), QStringLiteral("Papirus"));
        manager.reset();
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(1999ms);
        QCOMPARE(theme.name(), QStringLiteral("Papirus"));
        m_clock.advance(1ms);
        QCOMPARE(theme.name(), QStringLiteral("Gnomish"));
    }

    void aManagerThatIsStartedAnewChangesNothing()
    {
        auto manager = std::make_unique<SettingsManager>("Papirus");
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QTRY_COMPARE(theme.name(), QStringLiteral("Papirus"));
        QSignalSpy changed(&theme, &SessionIconTheme::nameChanged);
        manager.reset();
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        m_clock.advance(1999ms);
        manager = std::make_unique<SettingsManager>("Papirus");
        QTRY_COMPARE(m_clock.runningTimers(), 0);
        m_clock.advance(1h);
        QCOMPARE(theme.name(), QStringLiteral("Papirus"));
        QVERIFY(changed.isEmpty());
        manager->setIconTheme("Breeze");
        QTRY_COMPARE(theme.name(), QStringLiteral("Breeze"));
    }

    void oneThatTellsNothingYetIsWaitedForAsWell()
    {
        const SettingsManager manager("Papirus");
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QTRY_COMPARE(theme.name(), QStringLiteral("Papirus"));
        manager.setSettings({});
        QTRY_COMPARE(m_clock.runningTimers(), 1);
        QCOMPARE(theme.name(), QStringLiteral("Papirus"));
        m_clock.advance(2s);
        QCOMPARE(theme.name(), QStringLiteral("Gnomish"));
    }

    void aManagerThatTellsNonsenseLeavesTheWordToGnome()
    {
        const SettingsManager manager("Papirus");
        manager.setSettings(QByteArray(12, '\xff'));
        const SessionIconTheme theme(m_settings.get(), m_fileWatch, {});
        QTRY_COMPARE(theme.name(), QStringLiteral("Gnomish"));
    }

    void aChangeOfGnomesIsFollowed()
    {
        const SessionIconTheme theme(nullptr, m_fileWatch, {});
        QSignalSpy changed(&theme, &SessionIconTheme::nameChanged);
        setGnomeTheme("HighContrast");
        QTRY_COMPARE(theme.name(), QStringLiteral("HighContrast"));
        QCOMPARE(changed.size(), 1);
    }

    void inKdesSessionItsOwnSettingsSpeak()
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        const QTemporaryDir home;
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
        const SessionIconTheme theme(nullptr, m_fileWatch, {QStringLiteral("KDE")});
        QCOMPARE(theme.name(), QStringLiteral("breeze"));
        QSaveFile file(home.filePath(QStringLiteral("kdeglobals")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Icons]\nTheme=Oxygen\n");
        QVERIFY(file.commit());
        QTRY_COMPARE(theme.name(), QStringLiteral("Oxygen"));
        qputenv("XDG_CONFIG_HOME", before);
    }

private:
    FakeClock m_clock;
    QtFileWatch m_fileWatch;
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<DesktopSettingsClient> m_settings;
};

MOORLINE_TEST(SessionIconThemeTest);

} // namespace moorline::test

#include "SessionIconThemeTest.moc"

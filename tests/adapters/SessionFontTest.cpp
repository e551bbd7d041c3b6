#include "platform/linux/desktop/SessionFont.h"

#include "SettingsManager.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/x11/DesktopSettingsClient.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/qt/QtFileWatch.h"

#include <QDir>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace moorline::test {

namespace {

const QStringList kde{QStringLiteral("KDE")};
const QStringList gnome{QStringLiteral("ubuntu"), QStringLiteral("GNOME")};

void setGnomeFont(const char *description)
{
    const GObjectPointer<GSettings> settings(g_settings_new("org.gnome.desktop.interface"));
    QVERIFY(g_settings_set_string(settings.get(), "font-name", description));
    g_settings_sync();
}

} // namespace

/// Under an X server of its own, with the settings of GNOME installed.
class SessionFontTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_before = qgetenv("XDG_CONFIG_HOME");
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home->path()));
        setGnomeFont("Gnomish Bold 11");
        m_connection = XConnection::open();
        QVERIFY(m_connection);
        m_settings = std::make_unique<DesktopSettingsClient>(*m_connection, m_clock);
    }

    void cleanup()
    {
        m_settings.reset();
        m_connection.reset();
        qputenv("XDG_CONFIG_HOME", m_before);
        TestCase::cleanup();
    }

    void theManagerOfTheDesktopHasTheFirstWord()
    {
        writeKde("Kdeish,10");
        const SettingsManager manager("any");
        manager.setText("Gtk/FontName", "Noto Sans Medium 10");
        for (const QStringList &desktop : {kde, gnome}) {
            const SessionFont font(m_settings.get(), m_fileWatch, desktop);
            QTRY_COMPARE(font.family(), QStringLiteral("Noto Sans"));
        }
    }

    void aChangeOfTheManagersIsFollowed()
    {
        const SettingsManager manager("any");
        manager.setText("Gtk/FontName", "Inter 10");
        const SessionFont font(m_settings.get(), m_fileWatch, gnome);
        QTRY_COMPARE(font.family(), QStringLiteral("Inter"));
        QSignalSpy changed(&font, &SystemFont::familyChanged);
        manager.setText("Gtk/FontName", "Inter 12");
        manager.setText("Gtk/FontName", "DejaVu Sans 12");
        QTRY_COMPARE(font.family(), QStringLiteral("DejaVu Sans"));
        QCOMPARE(changed.size(), 1);
        // It tells of no font any more.
        manager.setIconTheme("Papirus");
        QTRY_COMPARE(font.family(), QStringLiteral("Gnomish"));
    }

    void withoutOneGnomesSettingsSpeak()
    {
        const SessionFont font(nullptr, m_fileWatch, {});
        QCOMPARE(font.family(), QStringLiteral("Gnomish"));
        QSignalSpy changed(&font, &SystemFont::familyChanged);
        setGnomeFont("Cantarell 11");
        QTRY_COMPARE(font.family(), QStringLiteral("Cantarell"));
        QCOMPARE(changed.size(), 1);
    }

    void inKdesSessionItsOwnSettingsSpeak()
    {
        writeKde("Kdeish,10,-1,5,50,0,0,0,0,0");
        const SessionFont font(nullptr, m_fileWatch, kde);
        QCOMPARE(font.family(), QStringLiteral("Kdeish"));
        QCOMPARE(SessionFont(nullptr, m_fileWatch, gnome).family(), QStringLiteral("Gnomish"));
        QSignalSpy changed(&font, &SystemFont::familyChanged);
        writeKde("Other Sans,10");
        QTRY_COMPARE(font.family(), QStringLiteral("Other Sans"));
        QVERIFY(QFile::remove(kdeglobals()));
        QTRY_COMPARE(font.family(), QStringLiteral("Noto Sans"));
        QCOMPARE(changed.size(), 2);
    }

    void kdesSettingsThatCannotBeReadSayNothing()
    {
        QVERIFY(QDir().mkdir(kdeglobals()));
        QCOMPARE(SessionFont(nullptr, m_fileWatch, kde).family(), QStringLiteral("Noto Sans"));
        QVERIFY(QDir().rmdir(kdeglobals()));
        QCOMPARE(::mkfifo(QFile::encodeName(kdeglobals()).constData(), 0600), 0);
        QCOMPARE(SessionFont(nullptr, m_fileWatch, kde).family(), QStringLiteral("Noto Sans"));
    }

private:
    [[nodiscard]] QString kdeglobals() const { return m_home->filePath(QStringLiteral("kdeglobals")); }

    void writeKde(const QByteArray &font) const
    {
        QSaveFile file(kdeglobals());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[General]\nfont=" + font + '\n');
        QVERIFY(file.commit());
    }

    QByteArray m_before;
    std::unique_ptr<QTemporaryDir> m_home;
    FakeClock m_clock;
    QtFileWatch m_fileWatch;
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<DesktopSettingsClient> m_settings;
};

MOORLINE_TEST(SessionFontTest);

} // namespace moorline::test

#include "SessionFontTest.moc"

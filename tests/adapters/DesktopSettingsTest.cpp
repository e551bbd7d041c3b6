#include "platform/linux/docks/DesktopSettings.h"
#include "harness/TestCase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

using moorline::DesktopDocks;
using moorline::DesktopSettings;
using moorline::SettingsPane;
using moorline::SettingsProgram;

/// The command line of the first settings program for a dock and a desktop.
QString firstCommand(const QString &dockProgram, const QStringList &desktopNames)
{
    const auto programs = moorline::dockSettingsPrograms(dockProgram, desktopNames);
    return programs.isEmpty() ? QString()
                              : (QStringList(programs.first().name) + programs.first().arguments).join(u' ');
}

class DesktopSettingsTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_path = qgetenv("PATH");
        m_dataFolders = qgetenv("XDG_DATA_DIRS");
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("PATH", QFile::encodeName(m_folder->path()));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(m_folder->path()));
    }

    void cleanup()
    {
        qputenv("PATH", m_path);
        qputenv("XDG_DATA_DIRS", m_dataFolders);
        m_folder.reset();
        TestCase::cleanup();
    }

    void eachDockAndDesktopHasItsProgram_data()
    {
        QTest::addColumn<QString>("dock");
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QString>("command");

        const auto row = [](const char *dock, const char *desktop, const char *command) {
            QTest::addRow("%s on %s", dock, desktop)
                << QString::fromLatin1(dock) << QString::fromLatin1(desktop) << QString::fromLatin1(command);
        };
        row("", "GNOME", "gnome-control-center");
        row("", "ubuntu:GNOME", "gnome-control-center ubuntu");
        row("", "Budgie:GNOME", "budgie-desktop-settings");
        row("", "KDE", "systemsettings");
        row("", "XFCE", "xfce4-panel --preferences");
        row("", "MATE", "mate-control-center");
        row("", "X-Cinnamon", "cinnamon-settings panel");
        row("", "LXQt", "lxqt-config");
        row("", "LXDE", "lxpanelctl config");
        row("plank", "", "plank --preferences");
        row("plank", "XFCE", "plank --preferences");
        row("tint2", "", "tint2conf");
        row("tint2", "KDE", "tint2conf");
        row("xfce4-panel", "", "xfce4-panel --preferences");
        row("", "", "");
        row("polybar", "i3", "");
    }

    void eachDockAndDesktopHasItsProgram()
    {
        QFETCH(QString, dock);
        QFETCH(QString, desktop);
        QTEST(firstCommand(dock, desktop.split(u':')), "command");
    }

    void eachDesktopHasItsProgramForTheLocation_data()
    {
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QString>("commands");

        const auto row = [](const char *desktop, const char *commands) {
            QTest::newRow(desktop) << QString::fromLatin1(desktop) << QString::fromLatin1(commands);
        };
        row("GNOME", "gnome-control-center location; gnome-control-center privacy location");
        row("ubuntu:GNOME", "gnome-control-center location; gnome-control-center privacy location");
        row("Budgie:GNOME",
            "budgie-control-center location; gnome-control-center location; gnome-control-center privacy location");
        row("KDE", "systemsettings; systemsettings5");
        row("XFCE", "xfce4-settings-manager");
        row("MATE", "mate-control-center");
        row("X-Cinnamon", "cinnamon-settings");
        row("LXQt", "lxqt-config");
        row("i3", "");
    }

    void eachDesktopHasItsProgramForTheLocation()
    {
        QFETCH(QString, desktop);
        QStringList commands;
        for (const SettingsProgram &program : moorline::locationSettingsPrograms(desktop.split(u':')))
            commands.append((QStringList(program.name) + program.arguments).join(u' '));
        QTEST(commands.join(QStringLiteral("; ")), "commands");
    }

    void noProgramIsTriedTwice()
    {
        const auto programs = moorline::dockSettingsPrograms(QStringLiteral("xfce4-panel"), {QStringLiteral("XFCE")});
        QCOMPARE(programs,
            (QList<SettingsProgram>{{QStringLiteral("xfce4-panel"), {QStringLiteral("--preferences")}},
                {QStringLiteral("xfce4-settings-manager")}}));
    }

    void theFirstInstalledProgramIsStartedWithItsArguments()
    {
        install(QStringLiteral("xfce4-panel"));
        install(QStringLiteral("xfce4-settings-manager"));
        open({QStringLiteral("XFCE")});
        QTRY_COMPARE(started(), QStringLiteral("xfce4-panel --preferences\n"));
    }

    void aProgramThatIsNotInstalledIsPassedOver()
    {
        install(QStringLiteral("xfce4-settings-manager"));
        open({QStringLiteral("XFCE")});
        QTRY_COMPARE(started(), QStringLiteral("xfce4-settings-manager\n"));
    }

    void theLocationPanelIsOpenedWhereThereIsOne()
    {
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("applications")));
        QFile entry(m_folder->filePath(QStringLiteral("applications/gnome-location-panel.desktop")));
        QVERIFY(entry.open(QIODevice::WriteOnly));
        install(QStringLiteral("gnome-control-center"));
        open({QStringLiteral("GNOME")}, SettingsPane::locationServices);
        QTRY_COMPARE(started(), QStringLiteral("gnome-control-center location\n"));
    }

    void thePageInThePrivacyPanelIsOpenedWhereThereIsNone()
    {
        install(QStringLiteral("gnome-control-center"));
        open({QStringLiteral("GNOME")}, SettingsPane::locationServices);
        QTRY_COMPARE(started(), QStringLiteral("gnome-control-center privacy location\n"));
    }

    void anotherDesktopsProgramIsNotStarted()
    {
        install(QStringLiteral("mate-control-center"));
        open({QStringLiteral("XFCE")});
        open({QStringLiteral("MATE")});
        QTRY_COMPARE(started(), QStringLiteral("mate-control-center\n"));
    }

private:
    static void open(const QStringList &desktopNames, SettingsPane pane = SettingsPane::desktopAndDock)
    {
        const DesktopDocks docks(nullptr, {});
        DesktopSettings(
            docks,
            [](const QString &program, const QStringList &arguments) { QProcess::startDetached(program, arguments); },
            desktopNames)
            .open(pane);
    }

    QString record() const { return m_folder->filePath(QStringLiteral("started")); }

    /// Puts a program into PATH that records how it was called.
    void install(const QString &name) const
    {
        QFile script(m_folder->filePath(name));
        const QString text =
            QStringLiteral("#!/bin/sh\necho \"${0##*/}${*:+ $*}\" >>'%1.part'\n/bin/mv '%1.part' '%1'\n");
        if (!script.open(QIODevice::WriteOnly) || script.write(text.arg(record()).toUtf8()) < 0)
            qFatal("cannot write %s", qPrintable(script.fileName()));
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString started() const
    {
        QFile file(record());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QByteArray m_path;
    QByteArray m_dataFolders;
    std::unique_ptr<QTemporaryDir> m_folder;
};

MOORLINE_TEST(DesktopSettingsTest);

} // namespace

#include "DesktopSettingsTest.moc"

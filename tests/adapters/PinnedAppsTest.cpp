#include "freedesktop/EntryCatalogue.h"
#include "harness/TestCase.h"
#include "platform/linux/docks/DesktopPreferences.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <glib.h>

namespace moorline::test {

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QStringList names(const char *desktops)
{
    return text(desktops).split(u':', Qt::SkipEmptyParts);
}

/// What the desktop's docks have, as their own programs would have written it.
class PinnedAppsTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // GLib asks for it once, and keeps its settings there.
        static_cast<void>(g_get_user_config_dir());
    }

    void init()
    {
        TestCase::init();
        m_configuration = qgetenv("XDG_CONFIG_HOME");
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder->path()));
    }

    void cleanup()
    {
        qputenv("XDG_CONFIG_HOME", m_configuration);
        TestCase::cleanup();
    }

    void whoseAreReadFollowsTheDockAndTheDesktop_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QList<PinSource>>("sources");

        const auto row = [](const char *program, const char *desktop, const QList<PinSource> &sources) {
            QTest::addRow("%s in %s", program, desktop) << text(program) << text(desktop) << sources;
        };
        row("plank", "XFCE", {PinSource::plank, PinSource::xfce});
        row("xfce4-panel", "XFCE", {PinSource::xfce});
        row("plasmashell", "KDE", {PinSource::kde});
        row("", "KDE", {PinSource::kde});
        row("", "GNOME", {PinSource::gnome});
        row("", "ubuntu:GNOME", {PinSource::gnome});
        row("budgie-panel", "Budgie:GNOME", {PinSource::budgie});
        row("", "Budgie:GNOME", {PinSource::budgie});
        row("cinnamon", "X-Cinnamon", {PinSource::cinnamon});
        row("tint2", "i3", {});
        row("", "", {});
    }

    void whoseAreReadFollowsTheDockAndTheDesktop()
    {
        QFETCH(QString, program);
        QFETCH(QString, desktop);
        const auto dock = program.isEmpty() ? std::nullopt : std::optional(DesktopDock{.program = program});
        QTEST(pinSources(dock, desktop.split(u':', Qt::SkipEmptyParts)), "sources");
    }

    void gnomesDockIsGnomes()
    {
        QCOMPARE(pinSources(DesktopDock{.kind = DesktopDock::Kind::gnome}, {}), QList<PinSource>{PinSource::gnome});
    }

    void plasmasAreRead()
    {
        write("plasma-org.kde.plasma.desktop-appletsrc",
            "[Containments][2][Applets][5][Configuration][General]\nlaunchers=applications:pad.desktop,preferred://"
            "x\n");
        QCOMPARE(labels("KDE"), QStringList({text("The Pad"), text("x")}));
    }

    void xfcesAreReadWithTheirCopies()
    {
        write("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", R"(<channel name="xfce4-panel">
<property name="panels"><property name="panel-1"><property name="plugin-ids"><value value="7"/></property></property></property>
<property name="plugins"><property name="plugin-7" value="launcher"><property name="items">
<value value="1.desktop"/><value value="2.desktop"/><value value="gone.desktop"/></property></property></property></channel>)");
        write("xfce4/panel/launcher-7/1.desktop",
            "[Desktop Entry]\nName=Copy\nX-XFCE-Source=file:///usr/share/applications/pad.desktop\n");
        const QString own = write("xfce4/panel/launcher-7/2.desktop", "[Desktop Entry]\nName=Mine\n");
        QCOMPARE(labels("XFCE"), QStringList({text("The Pad"), text("2"), text("gone")}));
        QCOMPARE(tiles("XFCE").at(1).value(text("file-data")).toMap().value(text("_CFURLString")).toString(),
            QUrl::fromLocalFile(own).toString());
    }

    void cinnamonsAreRead()
    {
        write("cinnamon/spices/grouped-window-list@cinnamon.org/2.json",
            R"({"pinned-apps": {"value": ["pad.desktop", "gone.desktop"]}})");
        write("cinnamon/spices/grouped-window-list@cinnamon.org/3.json",
            R"({"pinned-apps": {"value": ["pad.desktop", "other.desktop"]}})");
        QCOMPARE(labels("X-Cinnamon"), QStringList({text("The Pad"), text("gone"), text("other")}));
    }

    void gnomesFavouritesAreRead()
    {
        gsettings("org.gnome.shell", "favorite-apps", "['pad.desktop', 'gone.desktop']");
        QTRY_COMPARE(labels("ubuntu:GNOME"), QStringList({text("The Pad"), text("gone")}));
    }

    void budgiesAreRead()
    {
        const QByteArray base("/com/solus-project/budgie-panel/");
        gsettings("com.solus-project.budgie-panel", "panels", "['p']");
        gsettings("com.solus-project.budgie-panel.panel:" + base + "panels/{p}/", "applets", "['a', 'b']");
        gsettings("com.solus-project.budgie-panel.applet:" + base + "applets/{a}/", "name", "'Clock'");
        gsettings("com.solus-project.budgie-panel.applet:" + base + "applets/{b}/", "name", "'Icon Task List'");
        gsettings("com.solus-project.icon-tasklist:" + base + "instance/icon-tasklist/{a}/", "pinned-launchers",
            "['no.desktop']");
        gsettings("com.solus-project.icon-tasklist:" + base + "instance/icon-tasklist/{b}/", "pinned-launchers",
            "['pad.desktop', 'gone.desktop']");
        QTRY_COMPARE(labels("Budgie:GNOME"), QStringList({text("The Pad"), text("gone")}));
    }

    void withoutAnyThereAreNoTiles()
    {
        for (const char *desktop : {"KDE", "XFCE", "X-Cinnamon", "i3", ""})
            QCOMPARE(labels(desktop), QStringList());
    }

    void whatIsNoFileIsNotWaitedFor()
    {
        const QString path = m_folder->filePath(text("plasma-org.kde.plasma.desktop-appletsrc"));
        QVERIFY(QFile::link(text("/dev/zero"), path));
        QCOMPARE(labels("KDE"), QStringList());
    }

private:
    QString write(const char *below, const QByteArray &content) const
    {
        const QString path = m_folder->filePath(text(below));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    /// As another program sets it, in the settings that this one has read since it began.
    void gsettings(const QByteArray &schema, const char *key, const char *value) const
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("XDG_CONFIG_HOME"), QFile::decodeName(m_configuration));
        process.setProcessEnvironment(environment);
        process.start(text("gsettings"), {text("set"), QString::fromLatin1(schema), text(key), text(value)});
        if (!process.waitForFinished() || process.exitCode() != 0)
            qFatal("gsettings %s failed", schema.constData());
    }

    static QList<QVariantMap> tiles(const char *desktop)
    {
        EntryRecord pad{
            .path = text("/usr/share/applications/pad.desktop"), .id = text("pad"), .name = text("The Pad")};
        const auto entries = std::make_shared<EntryCatalogue>(QList<EntryRecord>{pad}, MimeDefaults(), QStringList());
        const DesktopDocks docks(nullptr, {});
        const DesktopPreferences preferences(
            docks, [entries] { return entries; }, names(desktop));
        const QVariantList values = preferences.open(text("com.apple.dock"))->value(text("persistent-apps")).toList();
        QList<QVariantMap> tiles;
        for (const QVariant &value : values)
            tiles.append(value.toMap().value(text("tile-data")).toMap());
        return tiles;
    }

    static QStringList labels(const char *desktop)
    {
        QStringList labels;
        for (const QVariantMap &tile : tiles(desktop))
            labels.append(tile.value(text("file-label")).toString());
        return labels;
    }

    QByteArray m_configuration;
    std::unique_ptr<QTemporaryDir> m_folder;
};

MOORLINE_TEST(PinnedAppsTest);

} // namespace

} // namespace moorline::test

#include "PinnedAppsTest.moc"

#include "freedesktop/DockPins.h"
#include "freedesktop/EntryCatalogue.h"
#include "harness/TestCase.h"

namespace {

using moorline::DockPin;
using moorline::EntryCatalogue;
using moorline::EntryRecord;
using moorline::MimeDefaults;
using moorline::XfceLauncher;
using Kind = DockPin::Kind;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

DockPin byId(const char *id)
{
    return {.id = text(id)};
}

DockPin byPath(const char *id, const char *path)
{
    return {.id = text(id), .path = text(path)};
}

EntryRecord record(const char *id, const char *name)
{
    return {.path = QStringLiteral("/usr/share/applications/%1.desktop").arg(text(id)),
        .id = text(id),
        .name = text(name),
        .exec = text("x %U")};
}

EntryCatalogue catalogue()
{
    EntryRecord manager = record("thunar", "Thunar");
    manager.mimeTypes = {text("inode/directory")};
    manager.categories = {text("FileManager")};
    EntryRecord browser = record("firefox", "Firefox");
    browser.mimeTypes = {text("x-scheme-handler/https")};
    EntryRecord own = record("pad", "My Pad");
    own.path = text("/home/ada/.local/share/applications/pad.desktop");
    EntryRecord successor = record("org.example.Draw", "Draw");
    successor.renamedFrom = {text("draw.desktop")};
    return EntryCatalogue({own, record("pad", "Pad"), manager, browser, successor}, MimeDefaults(), {});
}

/// The label and the address of a tile.
QStringList shown(const DockPin &pin)
{
    const QVariantMap data = moorline::dockTile(pin, catalogue()).value(text("tile-data")).toMap();
    return {data.value(text("file-label")).toString(),
        data.value(text("file-data")).toMap().value(text("_CFURLString")).toString()};
}

class DockPinsTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void applicationsAreNamedInManyWays_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<std::optional<DockPin>>("pin");

        const auto row = [](const char *name, const std::optional<DockPin> &pin) {
            QTest::newRow(name) << text(name) << pin;
        };
        row("firefox.desktop", byId("firefox"));
        row("org.gnome.Weather", byId("org.gnome.Weather"));
        row("applications:org.kde.kate.desktop", byId("org.kde.kate"));
        row("applications:org.kde.kate.desktop?iconData=abc", byId("org.kde.kate"));
        row("application://firefox.desktop", byId("firefox"));
        row("file:///usr/share/applications/a%20b.desktop", byPath("a b", "/usr/share/applications/a b.desktop"));
        row("file:///opt/x.desktop?iconData=abc", byPath("x", "/opt/x.desktop"));
        row("/opt/x.desktop", byPath("x", "/opt/x.desktop"));
        row("preferred://browser", DockPin{.kind = Kind::browser, .id = text("browser")});
        row("preferred://filemanager", DockPin{.kind = Kind::fileManager, .id = text("filemanager")});
        row("preferred://mailer", byId("mailer"));
        row("exo-file-manager.desktop", DockPin{.kind = Kind::fileManager, .id = text("exo-file-manager")});
        row("xfce4-web-browser.desktop", DockPin{.kind = Kind::browser, .id = text("xfce4-web-browser")});
        row("docklet://clock", std::nullopt);
        row("file:///home/ada/Documents", std::nullopt);
        row("https://example.org/x.desktop", std::nullopt);
        row("/home/ada", std::nullopt);
        row("", std::nullopt);
        row(".desktop", std::nullopt);
    }

    void applicationsAreNamedInManyWays()
    {
        QFETCH(QString, name);
        const auto pin = moorline::pinNamed(name);
        QTEST(pin, "pin");
    }

    void onlyAsManyAreReadAsADockHasRoomFor()
    {
        QCOMPARE(moorline::pinsNamed(QStringList(100'000, text("a.desktop"))).size(), 256);
    }

    void plankNamesTheEntryOfAnItem()
    {
        QCOMPARE(
            moorline::plankPin("[PlankDockItemPreferences]\nLauncher=file:///usr/share/applications/pad.desktop\n"),
            byPath("pad", "/usr/share/applications/pad.desktop"));
        QCOMPARE(moorline::plankPin("[PlankDockItemPreferences]\nLauncher=docklet://trash\n"), std::nullopt);
        QCOMPARE(moorline::plankPin("[PlankDockItemPreferences]\nLauncher=file:///home/ada\n"), std::nullopt);
        QCOMPARE(moorline::plankPin(QByteArray(1000, '\0')), std::nullopt);
        QCOMPARE(moorline::plankPin({}), std::nullopt);
    }

    void plasmaKeepsThemWithTheListOfWindows()
    {
        const QByteArray file("[Containments][2][Applets][5]\nplugin=org.kde.plasma.icontasks\nlaunchers=no.desktop\n\n"
                              "[Containments][2][Applets][5][Configuration][General]\nfill=false\n"
                              "launchers=applications:systemsettings.desktop,preferred://filemanager,"
                              "[a-1\\,b-2]\\napplications:kate.desktop,file:///opt/x.desktop?iconData=a\n\n"
                              "[Containments][2][Applets][6][Configuration][Other]\nlaunchers=applications:no.desktop\n"
                              "[Containments][3][Applets][7][Configuration][General]\n"
                              "launchers[$e]=applications:last.desktop\n");
        QCOMPARE(moorline::kdePins(file),
            (QList<DockPin>{byId("systemsettings"), {.kind = Kind::fileManager, .id = text("filemanager")},
                byId("kate"), byPath("x", "/opt/x.desktop"), byId("last")}));
        QCOMPARE(moorline::kdePins(QByteArray(100'000, '[')), QList<DockPin>());
    }

    void cinnamonKeepsThemAsAList()
    {
        QCOMPARE(moorline::cinnamonPins(R"({"other": 1, "pinned-apps": {"default": ["no.desktop"],
                "value": ["nemo.desktop", 5, "firefox.desktop"]}})"),
            (QList<DockPin>{byId("nemo"), byId("firefox")}));
        for (const QByteArray &damaged : {QByteArray("{"), QByteArray("[]"), QByteArray(R"({"pinned-apps": []})"),
                 QByteArray(R"({"pinned-apps": {"value": "nemo.desktop"}})"), QByteArray(100'000, '[')})
            QCOMPARE(moorline::cinnamonPins(damaged), QList<DockPin>());
    }

    void xfceKeepsThemOnItsPanels()
    {
        const QByteArray channel(R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="size" type="uint" value="26"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="12"/>
        <value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="applicationsmenu"/>
    <property name="plugin-3" type="string" value="launcher">
      <property name="items" type="array">
        <value type="string" value="1.desktop"/>
      </property>
    </property>
    <property name="plugin-12" type="string" value="launcher">
      <property name="items" type="array">
        <value type="string" value="2.desktop"/>
        <value type="string" value="thunar.desktop"/>
      </property>
    </property>
    <property name="plugin-14" type="string" value="launcher">
      <property name="items" type="array"><value type="string" value="of-no-panel.desktop"/></property>
    </property>
  </property>
</channel>)");
        QCOMPARE(moorline::xfceLaunchers(channel),
            (QList<XfceLauncher>{{12, {text("2.desktop"), text("thunar.desktop")}}, {3, {text("1.desktop")}}}));
        QCOMPARE(moorline::xfceLaunchers(channel.left(900)), QList<XfceLauncher>());
        QCOMPARE(moorline::xfceLaunchers("no xml"), QList<XfceLauncher>());
        QCOMPARE(moorline::xfceLaunchers({}), QList<XfceLauncher>());
    }

    void ofAnEndlessPanelTheRestIsNotLookedAt()
    {
        QByteArray channel("<channel name=\"xfce4-panel\" version=\"1.0\"><property name=\"plugins\" type=\"empty\">");
        QByteArray order("<property name=\"panels\"><property name=\"panel-1\"><property name=\"plugin-ids\">");
        for (int plugin = 1; plugin <= 1000; ++plugin) {
            const QByteArray number = QByteArray::number(plugin);
            channel += "<property name=\"plugin-" + number + "\" type=\"string\" value=\"launcher\"/>";
            order += "<value type=\"int\" value=\"" + number + "\"/>";
        }
        channel += "</property>" + order + "</property></property></property></channel>";
        QCOMPARE(moorline::xfceLaunchers(channel).size(), 257);
    }

    void xfcesCopySaysWhatItWasMadeFrom()
    {
        QCOMPARE(moorline::xfcePin("[Desktop Entry]\nX-XFCE-Source=file:///usr/share/applications/pad.desktop\n",
                     text("/p/launcher-3/163.desktop")),
            byPath("pad", "/usr/share/applications/pad.desktop"));
        QCOMPARE(moorline::xfcePin("[Desktop Entry]\nName=Mine\n", text("/p/launcher-3/163.desktop")),
            byPath("163", "/p/launcher-3/163.desktop"));
    }

    void aTileHasTheNameAndThePlaceThatCount_data()
    {
        QTest::addColumn<DockPin>("pin");
        QTest::addColumn<QStringList>("tile");

        const QString own = text("file:///home/ada/.local/share/applications/pad.desktop");
        const QString thunar = text("file:///usr/share/applications/thunar.desktop");
        QTest::newRow("by id") << byId("pad") << QStringList{text("My Pad"), own};
        QTest::newRow("the user's own counts")
            << byPath("pad", "/usr/share/applications/pad.desktop") << QStringList{text("My Pad"), own};
        QTest::newRow("the file manager") << byId("thunar") << QStringList{text("Finder"), thunar};
        QTest::newRow("the preferred one")
            << DockPin{.kind = Kind::fileManager, .id = text("filemanager")} << QStringList{text("Finder"), thunar};
        QTest::newRow("the preferred browser")
            << DockPin{.kind = Kind::browser, .id = text("browser")}
            << QStringList{text("Firefox"), text("file:///usr/share/applications/firefox.desktop")};
        QTest::newRow("renamed") << byId(
            "draw") << QStringList{text("Draw"), text("file:///usr/share/applications/org.example.Draw.desktop")};
        QTest::newRow("missing") << byId("gone") << QStringList{text("gone"), QString()};
        QTest::newRow("elsewhere") << byPath("x y", "/opt/x y.desktop")
                                   << QStringList{text("x y"), text("file:///opt/x%20y.desktop")};
    }

    void aTileHasTheNameAndThePlaceThatCount()
    {
        QFETCH(DockPin, pin);
        QTEST(shown(pin), "tile");
    }

    void withoutAFileManagerItsTileIsFinderAllTheSame()
    {
        const QVariantMap tile = moorline::dockTile({.kind = Kind::fileManager, .id = text("filemanager")}, {});
        QCOMPARE(tile, (QVariantMap{{text("tile-data"), QVariantMap{{text("file-label"), text("Finder")}}}}));
    }
};

MOORLINE_TEST(DockPinsTest);

} // namespace

#include "DockPinsTest.moc"

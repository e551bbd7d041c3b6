#include "platform/linux/docks/PinnedApps.h"

#include "platform/linux/docks/DesktopDocks.h"
#include "platform/linux/glib/GSettingsGroup.h"
#include "support/RegularFile.h"

#include <QDir>
#include <QStandardPaths>

namespace moorline {

namespace {

constexpr qint64 largestFile = qint64(512) * 1024;
/// Of panels, lists and launchers, each: more than anybody puts up.
constexpr qsizetype mostOfAll = 64;

struct Name {
    QLatin1StringView name;
    PinSource source;
};

/// By the window class of a dock, in lower case.
constexpr Name programs[] = {
    {QLatin1StringView("plank"), PinSource::plank},
    {QLatin1StringView("plasmashell"), PinSource::kde},
    {QLatin1StringView("xfce4-panel"), PinSource::xfce},
    {QLatin1StringView("cinnamon"), PinSource::cinnamon},
    {QLatin1StringView("budgie-panel"), PinSource::budgie},
};

/// In order of preference, because a desktop that is made from another also carries its name.
constexpr Name desktops[] = {
    {QLatin1StringView("Budgie"), PinSource::budgie},
    {QLatin1StringView("X-Cinnamon"), PinSource::cinnamon},
    {QLatin1StringView("KDE"), PinSource::kde},
    {QLatin1StringView("XFCE"), PinSource::xfce},
    {QLatin1StringView("GNOME"), PinSource::gnome},
};

std::optional<PinSource> sourceOf(const DesktopDock &dock)
{
    if (dock.kind == DesktopDock::Kind::gnome)
        return PinSource::gnome;
    for (const Name &one : programs) {
        if (dock.program == one.name)
            return one.source;
    }
    return std::nullopt;
}

QString configuration(const QString &below)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + below;
}

QByteArray content(const QString &path)
{
    return regularFileContent(path, largestFile).value_or(QByteArray());
}

QStringList settingsTexts(const QByteArray &schema, const char *key, const QByteArray &path = {})
{
    const auto group = GSettingsGroup::open(schema, path);
    return group ? group->texts(key).value_or(QStringList()).mid(0, mostOfAll) : QStringList();
}

QList<DockPin> ofXfce()
{
    QList<DockPin> pins;
    const QByteArray channel =
        content(configuration(QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml")));
    for (const XfceLauncher &launcher : xfceLaunchers(channel).mid(0, mostOfAll)) {
        const QDir folder(configuration(QStringLiteral("xfce4/panel/launcher-%1").arg(launcher.plugin)));
        for (const QString &item : launcher.items.mid(0, mostOfAll)) {
            const auto copy = regularFileContent(folder.filePath(item), largestFile);
            if (copy)
                pins.append(xfcePin(*copy, folder.filePath(item)));
            else
                pins += pinsNamed({item});
        }
    }
    return pins;
}

QList<DockPin> ofCinnamon()
{
    QList<DockPin> pins;
    const QString applet = QStringLiteral("grouped-window-list@cinnamon.org");
    QDir folder(configuration(QStringLiteral("cinnamon/spices/") + applet));
    // Where versions before 5.6 had it.
    if (!folder.exists())
        folder.setPath(QDir::homePath() + QStringLiteral("/.cinnamon/configs/") + applet);
    const QStringList files = folder.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name).mid(0, mostOfAll);
    for (const QString &file : files)
        pins += cinnamonPins(content(folder.filePath(file)));
    return pins;
}

QList<DockPin> ofBudgie()
{
    const auto at = [](const char *folder, const QString &id) {
        return QByteArray("/com/solus-project/budgie-panel/") + folder + "/{" + id.toUtf8() + "}/";
    };
    QStringList names;
    const QStringList panels = settingsTexts("com.solus-project.budgie-panel", "panels");
    for (const QString &panel : panels) {
        const QStringList applets =
            settingsTexts("com.solus-project.budgie-panel.panel", "applets", at("panels", panel));
        for (const QString &applet : applets) {
            const auto settings = GSettingsGroup::open("com.solus-project.budgie-panel.applet", at("applets", applet));
            if (settings && settings->text("name") == QLatin1StringView("Icon Task List")) {
                names += settingsTexts(
                    "com.solus-project.icon-tasklist", "pinned-launchers", at("instance/icon-tasklist", applet));
            }
        }
    }
    return pinsNamed(names);
}

} // namespace

QList<PinSource> pinSources(const std::optional<DesktopDock> &dock, const QStringList &desktopNames)
{
    QList<PinSource> sources;
    if (const auto own = dock ? sourceOf(*dock) : std::nullopt)
        sources.append(*own);
    for (const Name &one : desktops) {
        if (!desktopNames.contains(one.name, Qt::CaseInsensitive))
            continue;
        if (!sources.contains(one.source))
            sources.append(one.source);
        break;
    }
    return sources;
}

PinnedApps::PinnedApps(const DesktopDocks &docks, QStringList desktopNames)
    : m_docks(docks)
    , m_desktopNames(std::move(desktopNames))
{
}

QList<DockPin> PinnedApps::pins() const
{
    const auto concerning = m_docks.concerningDock();
    const auto dock = concerning ? std::optional(concerning->dock) : std::nullopt;
    QList<DockPin> pins;
    for (const PinSource source : pinSources(dock, m_desktopNames)) {
        for (const DockPin &pin : pinsOf(source, dock)) {
            if (!pins.contains(pin))
                pins.append(pin);
        }
    }
    return pins;
}

QList<DockPin> PinnedApps::pinsOf(PinSource source, const std::optional<DesktopDock> &dock) const
{
    switch (source) {
    case PinSource::plank:
        return ofPlank(dock);
    case PinSource::gnome:
        return pinsNamed(settingsTexts("org.gnome.shell", "favorite-apps"));
    case PinSource::kde:
        return kdePins(content(configuration(QStringLiteral("plasma-org.kde.plasma.desktop-appletsrc"))));
    case PinSource::xfce:
        return ofXfce();
    case PinSource::cinnamon:
        return ofCinnamon();
    case PinSource::budgie:
        return ofBudgie();
    }
    return {};
}

QList<DockPin> PinnedApps::ofPlank(const std::optional<DesktopDock> &dock) const
{
    QList<DockPin> pins;
    const auto items = dock ? m_docks.plankItems(*dock) : std::nullopt;
    if (!items)
        return pins;
    const QDir folder(configuration(QStringLiteral("plank/%1/launchers").arg(items->dock)));
    for (const QString &item : items->files.mid(0, mostOfAll)) {
        if (const auto pin = plankPin(content(folder.filePath(item))))
            pins.append(*pin);
    }
    return pins;
}

} // namespace moorline

#include "freedesktop/DockPins.h"

#include "freedesktop/EntryCatalogue.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>
#include <QXmlStreamReader>

namespace moorline {

namespace {

const QLatin1StringView suffix(".desktop");

/// Of what no dock has room for, the rest is not looked at.
constexpr qsizetype mostPins = 256;

QString withoutSuffix(const QString &name)
{
    return name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}

/// The roles that desktops have entries of their own for.
DockPin::Kind kindOf(const QString &id)
{
    static const QHash<QString, DockPin::Kind> kinds{
        {QStringLiteral("filemanager"), DockPin::Kind::fileManager},
        {QStringLiteral("exo-file-manager"), DockPin::Kind::fileManager},
        {QStringLiteral("xfce4-file-manager"), DockPin::Kind::fileManager},
        {QStringLiteral("browser"), DockPin::Kind::browser},
        {QStringLiteral("exo-web-browser"), DockPin::Kind::browser},
        {QStringLiteral("xfce4-web-browser"), DockPin::Kind::browser},
    };
    return kinds.value(id, DockPin::Kind::application);
}

std::optional<DockPin> pinAt(const QString &path)
{
    if (!path.endsWith(suffix))
        return std::nullopt;
    const QString id = withoutSuffix(path.section(u'/', -1));
    return DockPin{.kind = kindOf(id), .id = id, .path = path};
}

std::optional<DockPin> pinCalled(const QString &name)
{
    const QString id = withoutSuffix(name);
    return id.isEmpty() ? std::nullopt : std::optional(DockPin{.kind = kindOf(id), .id = id});
}

/// The value of a key in the file of some group, as it is written.
std::optional<QString> valueOf(const QByteArray &file, const QString &key)
{
    const QString beginning = key + u'=';
    for (const QByteArray &bytes : file.split('\n')) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.startsWith(beginning))
            return line.mid(beginning.size()).trimmed();
    }
    return std::nullopt;
}

/// At the commas that part, of which those within an item are marked. Before an item may stand where it is shown.
QStringList kdeItems(const QString &list)
{
    static const QRegularExpression comma(QStringLiteral("(?<!\\\\),"));
    QStringList items;
    for (const QString &item : list.split(comma, Qt::SkipEmptyParts))
        items.append(item.section(QStringLiteral("\\n"), -1));
    return items;
}

/// Reads which launchers there are, and in which order panels show their parts.
class XfceChannel final {
public:
    explicit XfceChannel(const QByteArray &channel)
        : m_reader(channel)
    {
        while (!m_reader.atEnd()) {
            m_reader.readNext();
            if (m_reader.isStartElement())
                begin();
            else if (m_reader.isEndElement())
                m_way.removeLast();
        }
        // Half a file says nothing of what is shown.
        if (m_reader.hasError())
            m_order.clear();
    }

    [[nodiscard]] QList<XfceLauncher> launchers() const
    {
        QList<XfceLauncher> shown;
        for (const int plugin : m_order) {
            if (m_kinds.value(plugin) == QLatin1StringView("launcher"))
                shown.append({.plugin = plugin, .items = m_items.value(plugin)});
        }
        return shown;
    }

private:
    void begin()
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        const QString value = attributes.value(QLatin1StringView("value")).toString();
        m_way.append(attributes.value(QLatin1StringView("name")).toString());
        if (m_way.size() < 3 || m_order.size() > mostPins)
            return;
        if (m_reader.name() == QLatin1StringView("value"))
            note(m_way.at(m_way.size() - 2), value);
        else if (m_way.at(m_way.size() - 2) == QLatin1StringView("plugins"))
            m_kinds.insert(plugin(m_way.last()), value);
    }

    void note(const QString &list, const QString &value)
    {
        if (list == QLatin1StringView("plugin-ids"))
            m_order.append(value.toInt());
        else if (list == QLatin1StringView("items"))
            m_items[plugin(m_way.at(m_way.size() - 3))].append(value);
    }

    static int plugin(const QString &name) { return name.section(u'-', -1).toInt(); }

    QXmlStreamReader m_reader;
    /// The names of what is open.
    QStringList m_way;
    QList<int> m_order;
    QHash<int, QString> m_kinds;
    QHash<int, QStringList> m_items;
};

const EntryRecord *recordOf(const DockPin &pin, const EntryCatalogue &entries)
{
    const auto never = [](const QString &) { return false; };
    switch (pin.kind) {
    case DockPin::Kind::fileManager:
        return entries.fileManager();
    case DockPin::Kind::browser:
        return entries.handler(QStringLiteral("x-scheme-handler/https"));
    case DockPin::Kind::application:
        break;
    }
    if (const auto path = entries.locate(pin.path, pin.id, never))
        return entries.byPath(*path);
    return entries.byPath(pin.path);
}

bool isFileManager(const DockPin &pin, const EntryRecord *record, const EntryCatalogue &entries)
{
    return pin.kind == DockPin::Kind::fileManager || (record && record == entries.fileManager());
}

QVariantMap tile(const QString &label, const QString &path)
{
    QVariantMap data{{QStringLiteral("file-label"), label}};
    if (!path.isEmpty()) {
        const QVariantMap file{
            {QStringLiteral("_CFURLString"), QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded())}};
        data.insert(QStringLiteral("file-data"), file);
    }
    return {{QStringLiteral("tile-data"), data}};
}

} // namespace

std::optional<DockPin> pinNamed(const QString &name)
{
    if (name.startsWith(u'/'))
        return pinAt(name);
    const qsizetype colon = name.indexOf(u':');
    if (colon < 0)
        return pinCalled(name);
    const QString scheme = name.left(colon);
    // Plasma puts an icon of its own behind it.
    const QString rest = name.mid(colon + 1).section(u'?', 0, 0);
    if (scheme == QLatin1StringView("applications") || scheme == QLatin1StringView("application"))
        return pinCalled(rest.section(u'/', -1));
    if (scheme == QLatin1StringView("preferred"))
        return pinCalled(rest.section(u'/', -1));
    if (scheme == QLatin1StringView("file"))
        return pinAt(QUrl(name.section(u'?', 0, 0)).toLocalFile());
    return std::nullopt;
}

QList<DockPin> pinsNamed(const QStringList &names)
{
    QList<DockPin> pins;
    for (const QString &name : names.mid(0, mostPins)) {
        if (const auto pin = pinNamed(name))
            pins.append(*pin);
    }
    return pins;
}

std::optional<DockPin> plankPin(const QByteArray &item)
{
    const auto launcher = valueOf(item, QStringLiteral("Launcher"));
    return launcher ? pinNamed(*launcher) : std::nullopt;
}

QList<DockPin> kdePins(const QByteArray &appletsrc)
{
    static const QRegularExpression applet(
        QStringLiteral("^\\[Containments\\]\\[\\d+\\]\\[Applets\\]\\[\\d+\\]\\[Configuration\\]\\[General\\]$"));
    static const QRegularExpression launchers(QStringLiteral("^launchers(?:\\[\\$e\\])?=(.*)$"));
    QStringList names;
    bool isApplet = false;
    for (const QByteArray &bytes : appletsrc.split('\n')) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.startsWith(u'['))
            isApplet = applet.match(line).hasMatch();
        else if (const auto match = launchers.match(line); isApplet && match.hasMatch())
            names += kdeItems(match.captured(1));
    }
    return pinsNamed(names);
}

QList<DockPin> cinnamonPins(const QByteArray &settings)
{
    const QJsonObject all = QJsonDocument::fromJson(settings).object();
    const QJsonArray value = all[QLatin1StringView("pinned-apps")][QLatin1StringView("value")].toArray();
    QStringList names;
    for (const auto &name : value)
        names.append(name.toString());
    return pinsNamed(names);
}

QList<XfceLauncher> xfceLaunchers(const QByteArray &channel)
{
    return XfceChannel(channel).launchers();
}

DockPin xfcePin(const QByteArray &copy, const QString &path)
{
    const auto source = valueOf(copy, QStringLiteral("X-XFCE-Source"));
    const auto pin = source ? pinNamed(*source) : std::nullopt;
    return pin.value_or(DockPin{.id = withoutSuffix(path.section(u'/', -1)), .path = path});
}

QVariantMap dockTile(const DockPin &pin, const EntryCatalogue &entries)
{
    const EntryRecord *record = recordOf(pin, entries);
    const QString path = record ? record->path : pin.path;
    if (isFileManager(pin, record, entries))
        return tile(QStringLiteral("Finder"), path);
    return tile(record ? record->name.value_or(record->id) : pin.id, path);
}

} // namespace moorline

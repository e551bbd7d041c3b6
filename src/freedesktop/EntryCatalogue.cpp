#include "freedesktop/EntryCatalogue.h"

#include <algorithm>

namespace moorline {

namespace {

const QLatin1StringView suffix(".desktop");

constexpr QLatin1StringView folderType("inode/directory");

struct StandIn {
    QLatin1StringView path;
    QLatin1StringView identifier;
};

constexpr StandIn standIns[] = {
    {QLatin1StringView("/System/Library/CoreServices/Finder.app"), fileManagerIdentifier},
    {QLatin1StringView("/System/Applications/Weather.app"), weatherIdentifier},
};

/// The weather applications of the large desktops, whose entries say of themselves in many ways what they are.
constexpr QLatin1StringView weatherIds[] = {
    QLatin1StringView("org.gnome.Weather"),
    QLatin1StringView("org.kde.kweather"),
};

bool isAmong(const QStringList &names, const QStringList &others)
{
    return std::any_of(
        names.begin(), names.end(), [&](const QString &name) { return others.contains(name, Qt::CaseInsensitive); });
}

bool isFileManager(const EntryRecord &record)
{
    return record.categories.contains(QLatin1StringView("FileManager"));
}

bool saysWeather(const EntryRecord &record)
{
    const QString weather = QStringLiteral("weather");
    return record.keywords.contains(weather, Qt::CaseInsensitive)
        || record.categories.contains(weather, Qt::CaseInsensitive);
}

bool canStart(const EntryRecord &record)
{
    return !record.exec.isEmpty() || record.dbusActivatable;
}

QString withoutSuffix(const QString &fileId)
{
    return fileId.endsWith(suffix) ? fileId.chopped(suffix.size()) : fileId;
}

} // namespace

EntryCatalogue::EntryCatalogue(const QList<EntryRecord> &found, MimeDefaults defaults, const QStringList &desktopNames)
    : m_defaults(std::move(defaults))
    , m_desktopNames(desktopNames)
{
    for (const EntryRecord &record : found) {
        if (m_byId.contains(record.id) || m_hiddenIds.contains(record.id))
            continue;
        if (record.hidden) {
            m_hiddenIds.insert(record.id);
            continue;
        }
        m_byId.insert(record.id, m_records.size());
        m_byPath.insert(record.path, m_records.size());
        m_records.append(record);
    }
    m_fileManager = findFileManager();
    m_weather = findWeather();
}

const EntryRecord *EntryCatalogue::recordAt(qsizetype index) const
{
    return index == none ? nullptr : &m_records.at(index);
}

const EntryRecord *EntryCatalogue::byId(const QString &id) const
{
    return recordAt(m_byId.value(id, none));
}

const EntryRecord *EntryCatalogue::byPath(const QString &path) const
{
    return recordAt(m_byPath.value(path, none));
}

bool EntryCatalogue::isListed(const EntryRecord &record) const
{
    if (record.noDisplay || !record.isTryExecThere || !canStart(record))
        return false;
    if (!record.onlyShowIn.isEmpty())
        return isAmong(m_desktopNames, record.onlyShowIn);
    return !isAmong(m_desktopNames, record.notShowIn);
}

QList<EntryRecord> EntryCatalogue::listed() const
{
    QList<EntryRecord> shown;
    std::copy_if(m_records.begin(), m_records.end(), std::back_inserter(shown),
        [this](const EntryRecord &record) { return isListed(record); });
    return shown;
}

QList<qsizetype> EntryCatalogue::handlers(const QString &mimeType) const
{
    QStringList declared;
    for (const EntryRecord &record : m_records) {
        if (record.mimeTypes.contains(mimeType))
            declared.append(record.id + suffix);
    }
    QList<qsizetype> found;
    const QStringList candidates = m_defaults.candidates(mimeType, declared);
    for (const QString &fileId : candidates) {
        const qsizetype index = m_byId.value(withoutSuffix(fileId), none);
        if (index != none && m_records.at(index).isTryExecThere && canStart(m_records.at(index)))
            found.append(index);
    }
    return found;
}

const EntryRecord *EntryCatalogue::handler(const QString &mimeType) const
{
    const QList<qsizetype> found = handlers(mimeType);
    return recordAt(found.isEmpty() ? none : found.first());
}

qsizetype EntryCatalogue::findFileManager() const
{
    const QList<qsizetype> found = handlers(folderType);
    const auto manager = std::find_if(
        found.begin(), found.end(), [this](qsizetype index) { return isFileManager(m_records.at(index)); });
    return manager == found.end() ? none : *manager;
}

qsizetype EntryCatalogue::findWeather() const
{
    for (const QLatin1StringView id : weatherIds) {
        const qsizetype index = m_byId.value(id, none);
        if (index != none && canStart(m_records.at(index)))
            return index;
    }
    const auto saying = std::find_if(m_records.begin(), m_records.end(),
        [this](const EntryRecord &record) { return isListed(record) && saysWeather(record); });
    return saying == m_records.end() ? none : saying - m_records.begin();
}

const EntryRecord *EntryCatalogue::wellKnown(const QString &identifier) const
{
    if (identifier == fileManagerIdentifier)
        return fileManager();
    return identifier == weatherIdentifier ? weather() : nullptr;
}

const EntryRecord *EntryCatalogue::standIn(const QString &path) const
{
    const auto found =
        std::find_if(std::begin(standIns), std::end(standIns), [&](const StandIn &one) { return path == one.path; });
    return found == std::end(standIns) ? nullptr : wellKnown(found->identifier);
}

QString EntryCatalogue::identifier(const EntryRecord &record) const
{
    const EntryRecord *manager = fileManager();
    return manager && manager->id == record.id ? QString(fileManagerIdentifier) : record.id;
}

const EntryRecord *EntryCatalogue::renamed(const QString &id) const
{
    const QString fileId = id + suffix;
    const auto found = std::find_if(m_records.begin(), m_records.end(),
        [&](const EntryRecord &record) { return record.renamedFrom.contains(fileId); });
    return found == m_records.end() ? nullptr : &*found;
}

std::optional<QString> EntryCatalogue::locate(const QString &path, const std::optional<QString> &identifier,
    const std::function<bool(const QString &)> &isEntry) const
{
    const QString id = identifier.value_or(withoutSuffix(path.section(u'/', -1)));
    if (const EntryRecord *known = identifier ? wellKnown(id) : standIn(path))
        return known->path;
    if (const EntryRecord *same = identifier ? byId(id) : byPath(path))
        return same->path;
    if (identifier && m_hiddenIds.contains(id))
        return std::nullopt;
    if (isEntry(path))
        return path;
    const EntryRecord *successor = renamed(id);
    return successor ? std::optional(successor->path) : std::nullopt;
}

bool EntryCatalogue::operator==(const EntryCatalogue &other) const
{
    return m_records == other.m_records && m_hiddenIds == other.m_hiddenIds && m_fileManager == other.m_fileManager
        && m_weather == other.m_weather && m_defaults == other.m_defaults;
}

} // namespace moorline

#include "platform/linux/apps/OutsideEntries.h"

#include "platform/linux/apps/EntryReader.h"

#include <QDir>
#include <algorithm>
#include <utility>

namespace moorline {

namespace {

/// More than anybody pins, for those who carry whole folders over the bar.
constexpr qsizetype mostOutside = 256;

std::optional<EntryRecord> readOutside(const QString &path, const EntryPlaces &places)
{
    auto record = readEntry(path, entryId(QDir::cleanPath(path), places.folders));
    return record && !record->hidden ? std::move(record) : std::nullopt;
}

} // namespace

OutsideEntries::OutsideEntries(Clock &clock, const EntryPlaces &places)
    : m_places(places)
    , m_schedule(clock, [this] { readAll(); })
{
}

const std::optional<EntryRecord> &OutsideEntries::find(const QString &path)
{
    if (const auto known = m_known.constFind(path); known != m_known.constEnd())
        return *known;
    if (m_known.size() >= mostOutside)
        m_known.clear();
    if (!m_hasBegun)
        return *m_known.insert(path, std::nullopt);
    // Before it is read: what comes meanwhile is told of.
    if (!m_schedule.events())
        m_schedule.follow(std::make_shared<FolderEvents>());
    m_schedule.events()->watchFile(path);
    return *m_known.insert(path, readOutside(path, m_places));
}

void OutsideEntries::begin(const std::function<bool(const QString &path)> &isInside)
{
    m_hasBegun = true;
    m_known.removeIf([&](const auto &entry) { return isInside(entry.key()); });
    if (!m_known.isEmpty())
        readAll();
}

OutsideEntries::Reading OutsideEntries::read(const QStringList &paths, const EntryPlaces &places)
{
    Reading reading{.entries = {}, .events = std::make_shared<FolderEvents>()};
    for (const QString &path : paths) {
        reading.events->watchFile(path);
        reading.entries.insert(path, readOutside(path, places));
    }
    return reading;
}

void OutsideEntries::readAll()
{
    m_schedule.begin();
    m_background.run<Reading>([places = m_places, paths = m_known.keys()] { return read(paths, places); },
        [this](const Reading &reading) { take(reading); });
}

void OutsideEntries::take(const Reading &reading)
{
    const QStringList known = m_known.keys();
    for (const QString &path : known) {
        // Asked for while the others were read.
        if (!reading.entries.contains(path))
            reading.events->watchFile(path);
    }
    const bool isNews = std::any_of(reading.entries.keyBegin(), reading.entries.keyEnd(), [&](const QString &path) {
        return m_known.contains(path) && m_known.value(path) != reading.entries.value(path);
    });
    m_known.insert(reading.entries);
    m_schedule.end(reading.events);
    if (isNews)
        Q_EMIT changed();
}

} // namespace moorline

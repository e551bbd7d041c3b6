#include "platform/linux/apps/OutsideEntries.h"

#include "platform/linux/apps/EntryReader.h"

#include <QDir>
#include <QFile>
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
    , m_looks(clock)
{
    connect(&m_looks, &MountLooks::answeredAtLast, this, &OutsideEntries::readAll);
}

OutsideEntries::~OutsideEntries()
{
    const QList<Promise<bool>> waiting = std::exchange(m_waiting, {});
    for (const Promise<bool> &promise : waiting)
        promise.resolve(false);
}

std::optional<EntryRecord> OutsideEntries::find(const QString &path)
{
    if (!m_known.contains(path)) {
        if (m_known.size() >= mostOutside)
            m_known.clear();
        note(path);
    }
    return m_known.value(path);
}

QCoro::Task<> OutsideEntries::lookAt(QStringList paths)
{
    // All that is asked for together is known together.
    if (m_known.size() + paths.size() > mostOutside)
        m_known.clear();
    for (const QString &path : std::as_const(paths)) {
        if (!m_known.contains(path))
            note(path);
    }
    if (!m_isReading)
        co_return;
    const Promise<bool> read;
    m_waiting.append(read);
    static_cast<void>(co_await read);
}

void OutsideEntries::begin(const std::function<bool(const QString &path)> &isInside)
{
    m_hasBegun = true;
    m_known.removeIf([&](const auto &entry) { return isInside(entry.key()); });
    if (!m_known.isEmpty())
        readAll();
}

void OutsideEntries::note(const QString &path)
{
    m_known.insert(path, std::nullopt);
    if (!m_hasBegun)
        return;
    if (m_isReading)
        m_unasked.insert(path);
    else
        readAll();
}

void OutsideEntries::readAll()
{
    if (m_isReading) {
        m_unasked.unite(QSet<QString>(m_known.keyBegin(), m_known.keyEnd()));
        return;
    }
    m_isReading = true;
    m_schedule.begin();
    const auto reading = std::make_shared<Reading>(Reading{.unread = m_known.size(), .entries = {}});
    const QStringList paths = m_known.keys();
    for (const QString &path : paths) {
        const auto read = [path, places = m_places, events = reading->events] {
            // Before it is read: what comes meanwhile is told of.
            events->watchFile(path);
            return readOutside(path, places);
        };
        m_looks.run<std::optional<EntryRecord>>(
            QFile::encodeName(path), read, [this, path, reading](const auto &answer) { take(*reading, path, answer); });
    }
    if (paths.isEmpty())
        end(*reading);
}

void OutsideEntries::take(
    Reading &reading, const QString &path, const std::optional<std::optional<EntryRecord>> &answer)
{
    // What is on a disk that does not answer is as it was.
    reading.entries.insert(path, answer.value_or(m_known.value(path)));
    if (--reading.unread == 0)
        end(reading);
}

void OutsideEntries::end(const Reading &reading)
{
    m_isReading = false;
    bool isNews = false;
    for (auto entry = reading.entries.begin(); entry != reading.entries.end(); ++entry) {
        const auto known = m_known.find(entry.key());
        if (known == m_known.end() || *known == *entry)
            continue;
        *known = *entry;
        isNews = true;
    }
    m_schedule.end(reading.events);
    const auto isKnown = [this](const QString &path) { return m_known.contains(path); };
    const QSet<QString> unasked = std::exchange(m_unasked, {});
    QList<Promise<bool>> waiting;
    if (std::any_of(unasked.begin(), unasked.end(), isKnown))
        readAll();
    else
        waiting = std::exchange(m_waiting, {});
    if (isNews)
        Q_EMIT changed();
    for (const Promise<bool> &promise : std::as_const(waiting))
        promise.resolve(true);
}

} // namespace moorline

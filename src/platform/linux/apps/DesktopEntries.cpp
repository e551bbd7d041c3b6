#include "platform/linux/apps/DesktopEntries.h"

#include "freedesktop/LaunchRules.h"

#include <QDir>
#include <QPointer>
#include <algorithm>

namespace moorline {

namespace {

/// Installing a program writes many files, one after the other.
constexpr std::chrono::milliseconds batchTime{500};

/// More than anybody pins, for those who carry whole folders over the bar.
constexpr qsizetype mostOutside = 256;

} // namespace

EntryPlaces sessionEntryPlaces()
{
    return entryPlaces([](const char *name) { return qEnvironmentVariable(name); }, QDir::homePath());
}

DesktopEntries::DesktopEntries(Clock &clock, EntryPlaces places)
    : m_clock(clock)
    , m_places(std::move(places))
    , m_catalogue(std::make_shared<EntryCatalogue>())
    , m_matcher(std::make_shared<WindowMatcher>())
    , m_cancelled(std::make_shared<std::atomic_bool>(false))
{
    load();
}

DesktopEntries::~DesktopEntries()
{
    m_cancelled->store(true);
    const QList<Promise<bool>> waiting = std::exchange(m_waiting, {});
    for (const Promise<bool> &promise : waiting)
        promise.resolve(false);
}

QString DesktopEntries::applicationExtension() const
{
    return QStringLiteral("desktop");
}

const std::optional<EntryRecord> &DesktopEntries::outside(const QString &path) const
{
    if (const auto known = m_outside.constFind(path); known != m_outside.constEnd())
        return *known;
    if (m_outside.size() >= mostOutside)
        m_outside.clear();
    // Before it is read: what comes meanwhile is told of.
    if (m_events)
        m_events->watchFile(path);
    return *m_outside.insert(path, readOutside(path, m_places));
}

BundleInfo DesktopEntries::infoOf(const EntryRecord &record) const
{
    BundleInfo info{.identifier = m_catalogue->identifier(record),
        .displayName = record.name,
        .takesFiles = moorline::takesFiles(record.exec)};
    if (!info.displayName)
        info.name = record.genericName;
    return info;
}

std::optional<BundleInfo> DesktopEntries::info(const QString &path) const
{
    if (const EntryRecord *stand = m_catalogue->standIn(path))
        return infoOf(*stand);
    if (const EntryRecord *known = m_catalogue->byPath(path))
        return infoOf(*known);
    const auto &record = outside(path);
    return record ? std::optional(infoOf(*record)) : std::nullopt;
}

std::optional<QString> DesktopEntries::locate(const QString &path, const std::optional<QString> &identifier) const
{
    return m_catalogue->locate(path, identifier, [this](const QString &other) { return outside(other).has_value(); });
}

QCoro::Task<QList<InstalledBundle>> DesktopEntries::installed()
{
    const QPointer<DesktopEntries> alive(this);
    if (!isCurrent()) {
        const Promise<bool> loaded;
        m_waiting.append(loaded);
        static_cast<void>(co_await loaded);
    }
    QList<InstalledBundle> bundles;
    if (!alive)
        co_return bundles;
    const QList<EntryRecord> listed = m_catalogue->listed();
    for (const EntryRecord &record : listed)
        bundles.append({.path = record.path, .info = infoOf(record)});
    co_return bundles;
}

void DesktopEntries::whenLoaded(const std::function<void()> &then)
{
    if (m_isLoaded)
        then();
    else
        m_thens.append(then);
}

void DesktopEntries::load()
{
    m_reload.reset();
    m_isLoading = true;
    m_isOutdated = false;
    m_background.run<LoadedEntries>([places = m_places, asked = m_outside.keys(),
                                        cancelled = m_cancelled] { return loadEntries(places, asked, *cancelled); },
        [this](const LoadedEntries &loaded) { take(loaded); });
}

void DesktopEntries::take(const LoadedEntries &loaded)
{
    m_isLoading = false;
    const bool isChange = !m_isLoaded || !(*m_catalogue == *loaded.catalogue) || isNews(loaded.outside);
    const bool isFirst = !std::exchange(m_isLoaded, true);
    if (isChange) {
        m_catalogue = loaded.catalogue;
        m_matcher = loaded.matcher;
    }
    // Nobody watched what was read until now, and everybody asks again.
    if (isFirst)
        m_outside.clear();
    takeOutside(loaded);
    follow(loaded.events);
    if (std::exchange(m_isOutdated, false))
        noteNews();
    const QList<Promise<bool>> waiting = std::exchange(m_waiting, {});
    const QList<std::function<void()>> thens = std::exchange(m_thens, {});
    if (isChange)
        Q_EMIT changed();
    for (const auto &then : thens)
        then();
    for (const Promise<bool> &promise : waiting)
        promise.resolve(true);
}

void DesktopEntries::takeOutside(const LoadedEntries &loaded)
{
    const QStringList known = m_outside.keys();
    for (const QString &path : known) {
        // Asked for while the others were read.
        if (!loaded.outside.contains(path))
            loaded.events->watchFile(path);
    }
    m_outside.insert(loaded.outside);
    m_outside.removeIf([this](const auto &entry) { return m_catalogue->byPath(entry.key()) != nullptr; });
}

bool DesktopEntries::isNews(const OutsideEntries &entries) const
{
    return std::any_of(entries.keyBegin(), entries.keyEnd(),
        [&](const QString &path) { return m_outside.contains(path) && m_outside.value(path) != entries.value(path); });
}

void DesktopEntries::follow(std::shared_ptr<FolderEvents> events)
{
    m_notifier.reset();
    m_events = std::move(events);
    if (m_events->descriptor() < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_events->descriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        if (m_events->takeNews())
            noteNews();
    });
}

void DesktopEntries::noteNews()
{
    if (m_isLoading)
        m_isOutdated = true;
    else if (!m_reload)
        m_reload = m_clock.after(batchTime, [this] { load(); });
}

} // namespace moorline

#include "platform/linux/apps/DesktopEntries.h"

#include "freedesktop/LaunchRules.h"

#include <QDir>
#include <QPointer>
#include <algorithm>

namespace moorline {

EntryPlaces sessionEntryPlaces()
{
    return entryPlaces([](const char *name) { return qEnvironmentVariable(name); }, QDir::homePath());
}

DesktopEntries::DesktopEntries(Clock &clock, EntryPlaces places)
    : m_places(std::move(places))
    , m_catalogue(std::make_shared<EntryCatalogue>())
    , m_matcher(std::make_shared<WindowMatcher>())
    , m_outside(std::make_unique<OutsideEntries>(clock, m_places))
    , m_cancelled(std::make_shared<std::atomic_bool>(false))
    , m_schedule(clock, [this] { load(); })
{
    connect(m_outside.get(), &OutsideEntries::changed, this, &AppBundles::changed);
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
    const auto record = m_outside->find(path);
    return record ? std::optional(infoOf(*record)) : std::nullopt;
}

QCoro::Task<> DesktopEntries::lookAt(QStringList paths)
{
    const QPointer<DesktopEntries> alive(this);
    if (!m_isLoaded) {
        const Promise<bool> loaded;
        m_waiting.append(loaded);
        static_cast<void>(co_await loaded);
    }
    if (!alive)
        co_return;
    paths.removeIf([this](const QString &path) { return m_catalogue->standIn(path) || m_catalogue->byPath(path); });
    co_await m_outside->lookAt(paths);
}

std::optional<QString> DesktopEntries::locate(const QString &path, const std::optional<QString> &identifier) const
{
    return m_catalogue->locate(
        path, identifier, [this](const QString &other) { return m_outside->find(other).has_value(); });
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
    m_schedule.begin();
    m_background.run<LoadedEntries>(
        [places = m_places, cancelled = m_cancelled] { return loadEntries(places, *cancelled); },
        [this](const LoadedEntries &loaded) { take(loaded); });
}

void DesktopEntries::take(const LoadedEntries &loaded)
{
    const bool isChange = !m_isLoaded || !(*m_catalogue == *loaded.catalogue);
    const bool isFirst = !std::exchange(m_isLoaded, true);
    if (isChange) {
        m_catalogue = loaded.catalogue;
        m_matcher = loaded.matcher;
    }
    if (isFirst)
        m_outside->begin([this](const QString &path) { return m_catalogue->byPath(path) != nullptr; });
    m_schedule.end(loaded.events);
    const QList<Promise<bool>> waiting = std::exchange(m_waiting, {});
    const QList<std::function<void()>> thens = std::exchange(m_thens, {});
    if (isChange)
        Q_EMIT changed();
    for (const auto &then : thens)
        then();
    for (const Promise<bool> &promise : waiting)
        promise.resolve(true);
}

} // namespace moorline

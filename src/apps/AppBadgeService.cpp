#include "apps/AppBadgeService.h"

#include "platform/AppBundles.h"
#include "settings/SettingsStore.h"

#include <QPointer>

namespace moorline {

AppBadgeService::AppBadgeService(Context context)
    : m_context(context)
{
}

void AppBadgeService::start()
{
    connect(&m_context.store, &SettingsStore::settingsDidChange, this, &AppBadgeService::applySettings);
    connect(&m_context.source, &BadgeSource::changed, this, &AppBadgeService::sourceChanged);
    connect(&m_context.bundles, &AppBundles::changed, this, &AppBadgeService::bundlesChanged);
    applySettings();
}

std::optional<QString> AppBadgeService::badge(const std::optional<QString> &bundleIdentifier) const
{
    const auto found = bundleIdentifier ? m_badges.constFind(*bundleIdentifier) : m_badges.constEnd();
    return found == m_badges.constEnd() ? std::nullopt : std::optional(*found);
}

void AppBadgeService::applySettings()
{
    if (m_context.store.settings().showAppBadges)
        startTimer();
    else
        stopTimer();
}

void AppBadgeService::startTimer()
{
    if (m_timer)
        return;
    m_timer = m_context.clock.every(refreshInterval, [this] { refresh(); });
    m_context.source.setActive(true);
    sourceChanged();
}

void AppBadgeService::stopTimer()
{
    if (!m_timer)
        return;
    m_timer.reset();
    m_context.source.setActive(false);
    setBadges({});
}

/// What a scan that is under way has passed already is looked at again after it.
void AppBadgeService::sourceChanged()
{
    m_isScanStale = m_isScanning;
    if (m_timer)
        refresh();
}

/// What is at a path may be another application now.
void AppBadgeService::bundlesChanged()
{
    m_bundleIDByPath.clear();
    sourceChanged();
}

void AppBadgeService::refresh()
{
    if (!m_context.source.isPermitted()) {
        setBadges({});
        return;
    }
    if (!m_isScanning)
        scan();
}

QCoro::Task<> AppBadgeService::scan()
{
    QPointer<AppBadgeService> alive{this};
    m_isScanning = true;
    const QList<BadgeTile> tiles = co_await m_context.source.tiles();
    if (!alive)
        co_return;
    m_isScanning = false;
    apply(tiles);
    if (std::exchange(m_isScanStale, false) && m_timer)
        refresh();
}

void AppBadgeService::apply(const QList<BadgeTile> &tiles)
{
    // Either may have been taken away meanwhile.
    if (!m_timer || !m_context.source.isPermitted())
        return;
    QHash<QString, QString> badges;
    for (const BadgeTile &tile : tiles) {
        if (const auto identifier = bundleID(tile.path))
            badges.insert(*identifier, tile.label);
    }
    setBadges(badges);
}

void AppBadgeService::setBadges(const QHash<QString, QString> &badges)
{
    if (badges == m_badges)
        return;
    m_badges = badges;
    Q_EMIT badgesChanged();
}

std::optional<QString> AppBadgeService::bundleID(const QString &path)
{
    if (const auto cached = m_bundleIDByPath.constFind(path); cached != m_bundleIDByPath.constEnd())
        return *cached;
    const auto bundle = m_context.bundles.info(path);
    if (!bundle || !bundle->identifier)
        return std::nullopt;
    m_bundleIDByPath.insert(path, *bundle->identifier);
    return bundle->identifier;
}

} // namespace moorline

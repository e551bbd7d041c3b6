#include "dock/BarContents.h"

#include "dock/BarMetrics.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

qint64 pinnedItemIcons(const Settings &settings)
{
    return settings.pinnedItems.size() + (settings.showDownloadsFolder ? 1 : 0) + (settings.showTrash ? 1 : 0);
}

bool hasSomethingToShow(WidgetKind kind, const Settings &settings, const BarState &state)
{
    switch (kind) {
    case WidgetKind::music:
        return state.musicVisible;
    case WidgetKind::recentApps:
        return state.recentApps > 0;
    case WidgetKind::pinnedItems:
        return pinnedItemIcons(settings) > 0;
    case WidgetKind::clock:
    case WidgetKind::calendar:
    case WidgetKind::weather:
    case WidgetKind::forecast:
    case WidgetKind::monthCounter:
    case WidgetKind::appShortcut:
        break;
    }
    return true;
}

} // namespace

bool isMusicVisible(const Settings &settings, const Playback &playback, const QDateTime &now)
{
    if (!settings.hideMusicWhenIdle || playback.isPlaying)
        return true;
    if (!playback.lastPlaybackAt)
        return false;
    const double idleSeconds = double(playback.lastPlaybackAt->msecsTo(now)) / 1000;
    return idleSeconds < double(settings.musicIdleTimeoutMinutes) * 60;
}

QList<WidgetKind> visibleWidgets(const Settings &settings, const BarState &state)
{
    QList<WidgetKind> visible;
    std::copy_if(settings.enabledWidgets.begin(), settings.enabledWidgets.end(), std::back_inserter(visible),
        [&](WidgetKind kind) { return hasSomethingToShow(kind, settings, state); });
    return visible;
}

IconCounts iconCounts(const QList<WidgetKind> &row, const Settings &settings, const BarState &state)
{
    IconCounts icons;
    const auto add = [&](WidgetKind kind, qint64 count) {
        if (count > 0 && row.contains(kind))
            icons = {icons.count + count, icons.groups + 1};
    };
    add(WidgetKind::appShortcut, settings.appShortcuts.size());
    add(WidgetKind::recentApps, state.recentApps);
    add(WidgetKind::pinnedItems, pinnedItemIcons(settings));
    return icons;
}

qreal fittedIconSize(const IconCounts &icons, qreal measuredWidth, qreal currentSize, qreal maximumWidth)
{
    if (icons.count < 1)
        return BarMetrics::largestIcon;
    const auto count = qreal(icons.count);
    const qreal gaps = qreal(icons.count - icons.groups) * BarMetrics::iconGap;
    const qreal fixed = measuredWidth - (gaps + currentSize * count);
    const qreal room = std::floor((maximumWidth - fixed - gaps) / count);
    const qreal fitted = std::clamp(room, BarMetrics::smallestIcon, BarMetrics::largestIcon);
    return std::abs(fitted - currentSize) >= 1 ? fitted : currentSize;
}

} // namespace moorline

#include "dock/SystemDockWatch.h"

#include "chrome/BarHolds.h"
#include "dock/PanelPlacement.h"
#include "platform/Pointer.h"
#include "settings/SettingsStore.h"
#include "system/SystemDock.h"

namespace moorline {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds interval{100};

} // namespace

SystemDockWatch::SystemDockWatch(Context context, QObject *parent)
    : QObject(parent)
    , m_context(context)
{
    connect(&m_context.holds, &BarHolds::heldChanged, this, [this] {
        if (m_timer && !m_context.holds.isHeld())
            look();
    });
}

void SystemDockWatch::restart()
{
    m_timer.reset();
    m_edgeEnteredAt.reset();
    if (m_context.store.settings().visibilityMode == DockVisibilityMode::hideWhenSystemDockAppears)
        m_timer = m_context.clock.every(interval, [this] { look(); });
    else
        setAway(false);
}

void SystemDockWatch::look()
{
    const auto height = pointerHeight(targetScreen(m_context.screens.screens()), m_context.pointer.location());
    if (!height)
        return;
    if (!isAtDockEdge(*height, m_isAway)) {
        m_edgeEnteredAt.reset();
        setAway(false);
    } else if (hasRestedLongEnough()) {
        setAway(m_context.systemDock.isRevealed());
    }
}

bool SystemDockWatch::hasRestedLongEnough()
{
    const milliseconds now = m_context.clock.uptime();
    if (!m_edgeEnteredAt)
        m_edgeEnteredAt = now;
    const std::chrono::duration<double> resting = now - *m_edgeEnteredAt;
    return resting.count() >= m_context.store.settings().hideDelaySeconds;
}

void SystemDockWatch::setAway(bool away)
{
    // What is held never leaves, but always may come back.
    if (away == m_isAway || (away && m_context.holds.isHeld()))
        return;
    m_isAway = away;
    Q_EMIT changed();
}

} // namespace moorline

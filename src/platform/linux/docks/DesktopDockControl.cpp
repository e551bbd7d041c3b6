#include "platform/linux/docks/DesktopDockControl.h"

#include "platform/linux/docks/DesktopDocks.h"

#include <algorithm>

namespace moorline {

DesktopDockControl::DesktopDockControl(DesktopDocks &docks)
    : m_docks(docks)
{
}

QCoro::Task<bool> DesktopDockControl::enableAutoHide()
{
    const auto concerning = m_docks.concerningDock();
    co_return concerning &&m_docks.makeHide(concerning->dock);
}

QCoro::Task<bool> DesktopDockControl::setRevealDelay(double seconds)
{
    const auto docks = m_docks.docks();
    co_return std::any_of(docks.begin(), docks.end(),
        [this, seconds](const DesktopDock &dock) { return m_docks.setRevealDelay(dock, seconds); });
}

} // namespace moorline

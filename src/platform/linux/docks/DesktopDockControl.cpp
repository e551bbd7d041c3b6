#include "platform/linux/docks/DesktopDockControl.h"

#include "platform/linux/docks/DesktopDocks.h"

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
    const auto concerning = m_docks.concerningDock();
    co_return concerning &&m_docks.setRevealDelay(concerning->dock, seconds);
}

} // namespace moorline

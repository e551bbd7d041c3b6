#include "platform/linux/docks/DesktopDockControl.h"

#include "platform/linux/docks/DesktopDock.h"

namespace moorline {

DesktopDockControl::DesktopDockControl(DesktopDock &dock)
    : m_dock(dock)
{
}

QCoro::Task<bool> DesktopDockControl::enableAutoHide()
{
    co_return m_dock.enableAutoHide();
}

QCoro::Task<bool> DesktopDockControl::setRevealDelay(double seconds)
{
    co_return m_dock.setRevealDelay(seconds);
}

} // namespace moorline

#pragma once

#include "platform/WindowServer.h"
#import "platform/macos/NotificationObserver.h"
#import "platform/macos/SkyLight.h"

namespace moorline {

/// The window server tells of no change. What can be heard of is that an application hid, came back or ended; what
/// comes with a switch of spaces or applications is the workspace's to tell.
class MacWindowServer final : public WindowServer {
public:
    MacWindowServer();

    [[nodiscard]] std::optional<QList<WindowDescription>> onScreenWindows() const override;
    [[nodiscard]] int level(WindowLevel level) const override;
    [[nodiscard]] std::optional<QList<DisplaySpace>> managedDisplaySpaces() const override;
    [[nodiscard]] std::optional<QString> mainDisplayUUID() const override;

private:
    SkyLight m_skyLight;
    NotificationObserver m_hideObserver;
    NotificationObserver m_unhideObserver;
    NotificationObserver m_terminationObserver;
};

} // namespace moorline

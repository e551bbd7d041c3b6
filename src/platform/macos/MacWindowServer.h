#pragma once

#include "platform/WindowServer.h"
#import "platform/macos/SkyLight.h"

namespace moorline {

class MacWindowServer final : public WindowServer {
public:
    [[nodiscard]] std::optional<QList<WindowDescription>> onScreenWindows() const override;
    [[nodiscard]] int level(WindowLevel level) const override;
    [[nodiscard]] std::optional<QVariantList> managedDisplaySpaces() const override;
    [[nodiscard]] std::optional<QString> mainDisplayUUID() const override;

private:
    SkyLight m_skyLight;
};

} // namespace moorline

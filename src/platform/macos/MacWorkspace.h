#pragma once

#include "platform/Workspace.h"
#import "platform/macos/NotificationObserver.h"

namespace moorline {

class MacWorkspace final : public Workspace {
public:
    MacWorkspace();

private:
    NotificationObserver m_spaceObserver;
    NotificationObserver m_activationObserver;
};

} // namespace moorline

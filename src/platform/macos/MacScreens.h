#pragma once

#include "platform/Screens.h"
#import "platform/macos/NotificationObserver.h"

namespace moorline {

class MacScreens final : public Screens {
public:
    MacScreens();

    [[nodiscard]] QList<Screen> screens() const override;

private:
    NotificationObserver m_parametersObserver;
};

} // namespace moorline

#pragma once

#include "platform/SystemSettings.h"

namespace moorline {

class MacSystemSettings final : public SystemSettings {
public:
    void open(SettingsPane pane) override;
};

} // namespace moorline

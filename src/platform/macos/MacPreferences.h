#pragma once

#include "platform/Preferences.h"

namespace moorline {

class MacPreferences final : public Preferences {
public:
    [[nodiscard]] std::unique_ptr<PreferenceDomain> open(const QString &domain) const override;
};

} // namespace moorline

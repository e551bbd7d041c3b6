#pragma once

#include "platform/Accessibility.h"

namespace moorline {

class MacAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() const override;
    [[nodiscard]] std::shared_ptr<AccessibilityElement> application(qint64 process) const override;
};

} // namespace moorline

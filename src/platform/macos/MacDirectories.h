#pragma once

#include "platform/Directories.h"

namespace moorline {

class MacDirectories final : public Directories {
public:
    [[nodiscard]] QString applicationSupport() const override;
    [[nodiscard]] QString downloads() const override;
    [[nodiscard]] QString trash() const override;
};

} // namespace moorline

#pragma once

#include "platform/Directories.h"

namespace moorline {

class MacDirectories final : public Directories {
public:
    [[nodiscard]] QString applicationSupport() const override;
};

} // namespace moorline

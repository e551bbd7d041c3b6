#pragma once

#include "platform/SystemImages.h"

namespace moorline {

class MacSystemImages final : public SystemImages {
public:
    [[nodiscard]] QImage symbol(const SymbolRequest &request) const override;
};

} // namespace moorline

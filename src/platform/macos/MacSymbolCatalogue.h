#pragma once

#include "platform/SymbolCatalogue.h"

namespace moorline {

class MacSymbolCatalogue final : public SymbolCatalogue {
public:
    [[nodiscard]] QImage symbol(const SymbolRequest &request) const override;
};

} // namespace moorline

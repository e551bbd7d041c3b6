#pragma once

#include "platform/SymbolCatalogue.h"

namespace moorline {

/// Symbols drawn from the program's own artwork: one square SVG for each, with a group "primary", perhaps a group
/// "secondary", and perhaps an unpainted rectangle "grid" whose edges are to lie on whole pixels.
class SvgSymbols final : public SymbolCatalogue {
public:
    SvgSymbols();

    /// A square 1.2 times as large as the text, rounded up to whole device pixels.
    [[nodiscard]] QImage symbol(const SymbolRequest &request) const override;
};

} // namespace moorline

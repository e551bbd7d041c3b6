#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace moorline {

/// Monochrome draws every layer in the full colour, hierarchical the secondary layer fainter.
enum class SymbolRendering { monochrome, hierarchical };

/// How heavy the strokes are, as those of text. A catalogue with one drawing of each symbol has it in the weight that
/// it is used in.
enum class SymbolWeight { regular, semibold };

/// The side of the square that a symbol fills, in units of the size of the text it goes with.
inline constexpr qreal symbolSideToPointSize = 1.2;

struct SymbolRequest {
    /// The catalogue name, such as "dock.rectangle".
    QString name;
    /// The size of the text that the symbol goes with, in points; the image is somewhat larger.
    qreal pointSize = 13;
    /// Device pixels per point.
    qreal scale = 1;
    QColor color;
    SymbolRendering rendering = SymbolRendering::monochrome;
    SymbolWeight weight = SymbolWeight::regular;
};

/// Symbols by catalogue name.
class SymbolCatalogue {
public:
    virtual ~SymbolCatalogue() = default;

    /// The symbol with its device pixel ratio set to the asked scale. A null image when there is no such symbol.
    [[nodiscard]] virtual QImage symbol(const SymbolRequest &request) const = 0;
};

} // namespace moorline

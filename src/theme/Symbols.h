#pragma once

#include "platform/SymbolCatalogue.h"

#include <QCache>
#include <QIcon>
#include <QPointF>
#include <QSizeF>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace moorline {

/// Symbols by catalogue name, drawn at the painter's real scale and cached, a bounded number of them.
class Symbols {
public:
    explicit Symbols(const SymbolCatalogue &catalogue);

    /// In points; empty when there is no such symbol.
    [[nodiscard]] QSizeF size(const QString &name, qreal pointSize, SymbolWeight weight = SymbolWeight::regular) const;
    void draw(QPainter &painter, const QPointF &topLeft, const QString &name, qreal pointSize, const QColor &color,
        SymbolRendering rendering = SymbolRendering::monochrome, SymbolWeight weight = SymbolWeight::regular) const;
    /// For menus and the tray, at every size and scale these commonly ask for.
    [[nodiscard]] QIcon icon(const QString &name, const QColor &color) const;

private:
    [[nodiscard]] QImage image(const SymbolRequest &request) const;

    const SymbolCatalogue &m_catalogue;
    mutable QCache<QString, QImage> m_cache;
};

} // namespace moorline

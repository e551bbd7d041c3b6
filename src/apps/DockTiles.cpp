#include "apps/DockTiles.h"

#include "platform/Accessibility.h"

#include <QLocale>
#include <QUrl>
#include <QVariant>
#include <cmath>
#include <optional>

namespace moorline {

namespace {

const QString childrenAttribute = QStringLiteral("AXChildren");
const QString labelAttribute = QStringLiteral("AXStatusLabel");
const QString addressAttribute = QStringLiteral("AXURL");

/// Without an exponent, and without a fraction where there is none.
QString plainDecimal(double number)
{
    return std::isfinite(number) ? QString::number(number, 'f', QLocale::FloatingPointShortest) : QString();
}

/// Empty for a tile without a badge.
QString labelText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString().trimmed();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return QString::number(value.toULongLong());
    case QMetaType::Double:
        return plainDecimal(value.toDouble());
    default:
        return {};
    }
}

/// Absent when it is no file URL.
std::optional<QString> filePath(const QVariant &value)
{
    const QUrl address = value.toUrl();
    if (value.typeId() != QMetaType::QUrl || !address.isLocalFile())
        return std::nullopt;
    return address.adjusted(QUrl::StripTrailingSlash).toLocalFile();
}

std::optional<BadgeTile> badgeTile(const AccessibilityElement &tile)
{
    const QString label = labelText(tile.value(labelAttribute));
    if (label.isEmpty())
        return std::nullopt;
    const auto path = filePath(tile.value(addressAttribute));
    return path ? std::optional(BadgeTile{*path, label}) : std::nullopt;
}

} // namespace

QList<BadgeTile> scanDockTiles(const AccessibilityElement &dock, const std::atomic_bool &isWanted)
{
    using List = AccessibilityElement::List;
    QList<BadgeTile> tiles;
    const List containers = dock.elements(childrenAttribute).value_or(List());
    for (const auto &container : containers) {
        const List children = container->elements(childrenAttribute).value_or(List());
        for (const auto &child : children) {
            if (!isWanted)
                return tiles;
            if (const auto tile = badgeTile(*child))
                tiles.append(*tile);
        }
    }
    return tiles;
}

} // namespace moorline

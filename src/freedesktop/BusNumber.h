#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QVariant;
QT_END_NAMESPACE

namespace moorline {

/// Whether a value of the bus is of one of its number types; programs differ in which they tell the same thing by.
[[nodiscard]] bool isBusNumber(const QVariant &value);

} // namespace moorline

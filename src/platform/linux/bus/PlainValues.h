#pragma once

#include <QVariantMap>

namespace moorline {

/// The values of a map of D-Bus in types of Qt Core: the path of an object and a signature as texts, variants and maps
/// of texts to variants for what they hold. A value of any other compound type is left out.
[[nodiscard]] QVariantMap plainValues(const QVariantMap &values);

} // namespace moorline

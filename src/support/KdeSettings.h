#pragma once

#include <QByteArray>

namespace moorline {

/// What a file of KDE's settings has for a key in a group. Empty where it has nothing.
[[nodiscard]] QByteArray kdeSetting(const QByteArray &file, const QByteArray &group, const QByteArray &key);

} // namespace moorline

#pragma once

#include "settings/Settings.h"

#include <QByteArray>
#include <optional>

namespace moorline {

/// Reads a settings document. A key that is missing, null, of another type, out of range, unknown or no JSON leaves
/// that one field at its default; a list with one unreadable entry is dropped whole. Absent only when `json` is not a
/// JSON object.
[[nodiscard]] std::optional<Settings> decodeSettings(const QByteArray &json);

/// Every field, pretty-printed, keys in alphabetical order, UTF-8.
[[nodiscard]] QByteArray encodeSettings(const Settings &settings);

} // namespace moorline

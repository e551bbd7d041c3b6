#pragma once

#include <QByteArray>
#include <optional>

namespace moorline {

/// One text among the settings that a desktop hands to every program through the X server, from the bytes as they stand
/// in the property. Absent when there is none of that name, it is no text, or the bytes before it are damaged.
[[nodiscard]] std::optional<QByteArray> xSettingsText(const QByteArray &settings, const QByteArray &name);

} // namespace moorline

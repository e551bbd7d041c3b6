#pragma once

#include "settings/Settings.h"

#include <QByteArray>
#include <QJsonObject>
#include <optional>

namespace moorline {

/// What a settings document holds.
struct SettingsDocument {
    Settings settings;
    /// All members that can be read, with those that mean nothing to this version of the program.
    QJsonObject members;
    /// Whether that is everything. What could not be read is at its default in `settings`.
    bool isWhole = true;
};

/// Reads a settings document. A key that is missing, null, of another type, out of range, unknown or no JSON leaves
/// that one field at its default; a list with one unreadable entry is dropped whole. Absent only when `json` is not a
/// JSON object.
[[nodiscard]] std::optional<SettingsDocument> readSettings(const QByteArray &json);
/// Just the settings in it.
[[nodiscard]] std::optional<Settings> decodeSettings(const QByteArray &json);

/// The members of a document with these settings in the place of its own. All else in it stays as it is: members of
/// another name, and whatever else stands in a record that both have.
[[nodiscard]] QJsonObject writtenOver(QJsonObject members, const Settings &settings);
/// As a document: pretty-printed, keys in alphabetical order, UTF-8.
[[nodiscard]] QByteArray documentOf(const QJsonObject &members);
/// A document with every field and nothing else.
[[nodiscard]] QByteArray encodeSettings(const Settings &settings);

} // namespace moorline

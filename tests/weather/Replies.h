#pragma once

#include <QJsonArray>
#include <QJsonObject>

/// Answers as the web services give them.
namespace moorline::test::replies {

/// A list of texts.
[[nodiscard]] QJsonArray texts(std::initializer_list<const char *> texts);
[[nodiscard]] QByteArray bytes(const QJsonObject &object);

/// Open-Meteo for San Francisco: 60.4 degrees, feels like 58.6, partly cloudy by day, and four days from 4 March 2025.
[[nodiscard]] QJsonObject forecast();
/// The same with a field of one of its objects replaced, or removed where the value is undefined.
[[nodiscard]] QJsonObject forecastWith(
    const QString &object, const QString &field, const QJsonValue &value = QJsonValue::Undefined);
/// The same with a field of its own replaced or removed.
[[nodiscard]] QJsonObject forecastWith(const QString &field, const QJsonValue &value = QJsonValue::Undefined);

/// ipwho.is for a caller in Munich, and ipapi.co for one in Oslo.
[[nodiscard]] QJsonObject ipWho();
[[nodiscard]] QJsonObject ipAPI();

/// Open-Meteo's geocoding of "Berlin": two places.
[[nodiscard]] QJsonObject cities();

} // namespace moorline::test::replies

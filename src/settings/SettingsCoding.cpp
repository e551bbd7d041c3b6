#include "settings/SettingsCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>
#include <concepts>

namespace moorline {

namespace {

/// The raw values of an enumeration in the settings file.
template <typename Enum>
struct RawValues;

template <>
struct RawValues<DockVisibilityMode> {
    static constexpr std::pair<DockVisibilityMode, const char *> all[] = {
        {DockVisibilityMode::alwaysVisible, "always"}, {DockVisibilityMode::hideWhenSystemDockAppears, "auto"}};
};

template <>
struct RawValues<TemperatureUnit> {
    static constexpr std::pair<TemperatureUnit, const char *> all[] = {
        {TemperatureUnit::celsius, "celsius"}, {TemperatureUnit::fahrenheit, "fahrenheit"}};
};

template <>
struct RawValues<ClockFormat> {
    static constexpr std::pair<ClockFormat, const char *> all[] = {
        {ClockFormat::twelveHour, "12h"}, {ClockFormat::twentyFourHour, "24h"}};
};

template <>
struct RawValues<MusicStyle> {
    static constexpr std::pair<MusicStyle, const char *> all[] = {
        {MusicStyle::player, "player"}, {MusicStyle::compact, "compact"}};
};

template <>
struct RawValues<RecentAppsMode> {
    static constexpr std::pair<RecentAppsMode, const char *> all[] = {
        {RecentAppsMode::runningOnly, "running"}, {RecentAppsMode::anyState, "any"}};
};

template <typename Enum>
concept HasRawValues = requires
{
    RawValues<Enum>::all;
};

// Decoding: each reads one value and answers whether it had the type.

bool decode(const QJsonValue &json, bool &value)
{
    value = json.toBool();
    return json.isBool();
}

bool decode(const QJsonValue &json, double &value)
{
    value = json.toDouble();
    return json.isDouble();
}

bool decode(const QJsonValue &json, qint64 &value)
{
    constexpr qint64 probe = 1;
    value = json.toInteger();
    // Two defaults tell a number that is no integer from one that equals the default.
    return json.isDouble() && value == json.toInteger(probe);
}

bool decode(const QJsonValue &json, QString &value)
{
    value = json.toString();
    return json.isString();
}

bool decode(const QJsonValue &json, WidgetKind &value)
{
    const auto &kinds = allWidgetKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(),
        [&](WidgetKind kind) { return json.isString() && rawValue(kind) == json.toString(); });
    if (found == kinds.end())
        return false;
    value = *found;
    return true;
}

template <HasRawValues Enum>
bool decode(const QJsonValue &json, Enum &value)
{
    for (const auto &[candidate, raw] : RawValues<Enum>::all) {
        if (json.isString() && json.toString() == QLatin1StringView(raw)) {
            value = candidate;
            return true;
        }
    }
    return false;
}

template <typename Value>
bool decode(const QJsonValue &json, std::optional<Value> &value)
{
    if (json.isUndefined() || json.isNull()) {
        value.reset();
        return true;
    }
    return decode(json, value.emplace());
}

bool decode(const QJsonValue &json, PinnedItem &value)
{
    return decode(json[QLatin1StringView("path")], value.path) && decode(json[QLatin1StringView("name")], value.name);
}

bool decode(const QJsonValue &json, AppShortcut &value)
{
    return decode(json[QLatin1StringView("path")], value.path) && decode(json[QLatin1StringView("name")], value.name)
        && decode(json[QLatin1StringView("bundleIdentifier")], value.bundleIdentifier);
}

bool decode(const QJsonValue &json, WeatherLocation &value)
{
    return decode(json[QLatin1StringView("name")], value.name)
        && decode(json[QLatin1StringView("admin1")], value.admin1)
        && decode(json[QLatin1StringView("country")], value.country)
        && decode(json[QLatin1StringView("latitude")], value.latitude)
        && decode(json[QLatin1StringView("longitude")], value.longitude)
        && decode(json[QLatin1StringView("timezone")], value.timezone);
}

template <typename Value>
bool decode(const QJsonValue &json, QList<Value> &value)
{
    const QJsonArray array = json.toArray();
    value.clear();
    for (const auto &entry : array) {
        Value decoded{};
        if (!decode(entry, decoded))
            return false;
        value.append(decoded);
    }
    return json.isArray();
}

// Encoding.

QJsonValue encode(std::same_as<bool> auto value)
{
    return value;
}

QJsonValue encode(double value)
{
    return value;
}

QJsonValue encode(qint64 value)
{
    return value;
}

QJsonValue encode(const QString &value)
{
    return value;
}

QJsonValue encode(WidgetKind value)
{
    return rawValue(value);
}

template <HasRawValues Enum>
QJsonValue encode(Enum value)
{
    const auto *found = std::find_if(std::begin(RawValues<Enum>::all), std::end(RawValues<Enum>::all),
        [value](const auto &entry) { return entry.first == value; });
    return QLatin1StringView(found->second);
}

void insert(QJsonObject &object, QLatin1StringView key, const std::optional<QString> &value)
{
    if (value)
        object.insert(key, *value);
}

QJsonValue encode(const PinnedItem &value)
{
    return QJsonObject{{QStringLiteral("path"), value.path}, {QStringLiteral("name"), value.name}};
}

QJsonValue encode(const AppShortcut &value)
{
    QJsonObject object{{QStringLiteral("path"), value.path}, {QStringLiteral("name"), value.name}};
    insert(object, QLatin1StringView("bundleIdentifier"), value.bundleIdentifier);
    return object;
}

QJsonValue encode(const WeatherLocation &value)
{
    QJsonObject object{{QStringLiteral("name"), value.name}, {QStringLiteral("latitude"), value.latitude},
        {QStringLiteral("longitude"), value.longitude}};
    insert(object, QLatin1StringView("admin1"), value.admin1);
    insert(object, QLatin1StringView("country"), value.country);
    insert(object, QLatin1StringView("timezone"), value.timezone);
    return object;
}

template <typename Value>
QJsonValue encode(const QList<Value> &values)
{
    QJsonArray array;
    for (const Value &value : values)
        array.append(encode(value));
    return array;
}

/// Calls `visit` with the key and the field of every setting, in the order of the record.
template <typename Record, typename Visit>
void visitFields(Record &settings, Visit visit)
{
    visit("visibilityMode", settings.visibilityMode);
    visit("temperatureUnit", settings.temperatureUnit);
    visit("clockFormat", settings.clockFormat);
    visit("showSeconds", settings.showSeconds);
    visit("musicStyle", settings.musicStyle);
    visit("hideMusicWhenIdle", settings.hideMusicWhenIdle);
    visit("musicIdleTimeoutMinutes", settings.musicIdleTimeoutMinutes);
    visit("recentAppCount", settings.recentAppCount);
    visit("recentAppsMode", settings.recentAppsMode);
    visit("hideRecentAppsAlreadyPinned", settings.hideRecentAppsAlreadyPinned);
    visit("showAppBadges", settings.showAppBadges);
    visit("reserveScreenSpace", settings.reserveScreenSpace);
    visit("pinnedItems", settings.pinnedItems);
    visit("showDownloadsFolder", settings.showDownloadsFolder);
    visit("showTrash", settings.showTrash);
    visit("pinnedItemsIntroduced", settings.pinnedItemsIntroduced);
    visit("enabledWidgets", settings.enabledWidgets);
    visit("highlightColorHex", settings.highlightColorHex);
    visit("appShortcuts", settings.appShortcuts);
    visit("location", settings.location);
    visit("useCurrentLocation", settings.useCurrentLocation);
    visit("launchAtLogin", settings.launchAtLogin);
    visit("showOverFullScreenApps", settings.showOverFullScreenApps);
    visit("showAutoHideNudge", settings.showAutoHideNudge);
    visit("hideDelaySeconds", settings.hideDelaySeconds);
    visit("bottomGap", settings.bottomGap);
}

} // namespace

std::optional<Settings> decodeSettings(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    Settings settings = Settings::defaults();
    visitFields(settings, [&object](const char *key, auto &field) {
        auto decoded = field;
        if (decode(object[QLatin1StringView(key)], decoded))
            field = decoded;
    });
    return settings;
}

QByteArray encodeSettings(const Settings &settings)
{
    QJsonObject object;
    visitFields(settings,
        [&object](const char *key, const auto &field) { object.insert(QLatin1StringView(key), encode(field)); });
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

} // namespace moorline

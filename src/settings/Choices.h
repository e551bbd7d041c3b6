#pragma once

#include "settings/Settings.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

namespace moorline {

/// One value of an enumeration: its text in the settings file, and what menus and the settings window say of it.
template <typename Enum>
struct Choice {
    Enum value;
    const char *raw;
    const char *label;
    const char *description = "";
};

/// The one table of an enumeration: the context its texts are translated in, and every choice in the order in which it
/// is offered.
template <typename Enum>
struct Choices;

template <>
struct Choices<DockVisibilityMode> {
    static constexpr auto context = "DockVisibilityMode";
    static constexpr Choice<DockVisibilityMode> all[] = {
        {DockVisibilityMode::alwaysVisible, "always", QT_TRANSLATE_NOOP("DockVisibilityMode", "Always visible")},
        {DockVisibilityMode::hideWhenSystemDockAppears, "auto",
            QT_TRANSLATE_NOOP("DockVisibilityMode", "Hide when the macOS Dock appears")},
    };
};

template <>
struct Choices<TemperatureUnit> {
    static constexpr auto context = "TemperatureUnit";
    static constexpr Choice<TemperatureUnit> all[] = {
        {TemperatureUnit::fahrenheit, "fahrenheit", QT_TRANSLATE_NOOP("TemperatureUnit", "Fahrenheit")},
        {TemperatureUnit::celsius, "celsius", QT_TRANSLATE_NOOP("TemperatureUnit", "Celsius")},
    };
};

template <>
struct Choices<ClockFormat> {
    static constexpr auto context = "ClockFormat";
    static constexpr Choice<ClockFormat> all[] = {
        {ClockFormat::twelveHour, "12h", QT_TRANSLATE_NOOP("ClockFormat", "12-hour")},
        {ClockFormat::twentyFourHour, "24h", QT_TRANSLATE_NOOP("ClockFormat", "24-hour")},
    };
};

template <>
struct Choices<MusicStyle> {
    static constexpr auto context = "MusicStyle";
    static constexpr Choice<MusicStyle> all[] = {
        {MusicStyle::player, "player", QT_TRANSLATE_NOOP("MusicStyle", "Player with controls")},
        {MusicStyle::compact, "compact", QT_TRANSLATE_NOOP("MusicStyle", "Compact")},
    };
};

template <>
struct Choices<RecentAppsMode> {
    static constexpr auto context = "RecentAppsMode";
    static constexpr Choice<RecentAppsMode> all[] = {
        {RecentAppsMode::runningOnly, "running", QT_TRANSLATE_NOOP("RecentAppsMode", "Only apps that are running")},
        {RecentAppsMode::anyState, "any", QT_TRANSLATE_NOOP("RecentAppsMode", "Recently used apps, open or not")},
    };
};

/// In canonical order, which is the order of the enumeration.
template <>
struct Choices<WidgetKind> {
    static constexpr auto context = "WidgetKind";
    static constexpr Choice<WidgetKind> all[] = {
        {WidgetKind::clock, "clock", QT_TRANSLATE_NOOP("WidgetKind", "Clock"),
            QT_TRANSLATE_NOOP("WidgetKind", "Time and date")},
        {WidgetKind::calendar, "calendar", QT_TRANSLATE_NOOP("WidgetKind", "Calendar"),
            QT_TRANSLATE_NOOP("WidgetKind", "Weekday and day of month")},
        {WidgetKind::weather, "weather", QT_TRANSLATE_NOOP("WidgetKind", "Weather"),
            QT_TRANSLATE_NOOP("WidgetKind", "Current conditions")},
        {WidgetKind::forecast, "forecast", QT_TRANSLATE_NOOP("WidgetKind", "Forecast"),
            QT_TRANSLATE_NOOP("WidgetKind", "Next three days")},
        {WidgetKind::music, "music", QT_TRANSLATE_NOOP("WidgetKind", "Now Playing"),
            QT_TRANSLATE_NOOP("WidgetKind", "Music & Spotify with transport controls")},
        {WidgetKind::monthCounter, "month-counter", QT_TRANSLATE_NOOP("WidgetKind", "Year Progress"),
            QT_TRANSLATE_NOOP("WidgetKind", "How far through the year you are")},
        {WidgetKind::appShortcut, "app-shortcut", QT_TRANSLATE_NOOP("WidgetKind", "App Shortcuts"),
            QT_TRANSLATE_NOOP("WidgetKind", "Your pinned apps")},
        {WidgetKind::recentApps, "recent-apps", QT_TRANSLATE_NOOP("WidgetKind", "Recent Apps"),
            QT_TRANSLATE_NOOP("WidgetKind", "The apps you used last, most recent first")},
        {WidgetKind::pinnedItems, "pinned-items", QT_TRANSLATE_NOOP("WidgetKind", "Files & Folders"),
            QT_TRANSLATE_NOOP("WidgetKind", "Pinned files and folders, Downloads, and Trash")},
    };
};

template <typename Enum>
concept HasChoices = requires
{
    Choices<Enum>::all;
};

/// The entry of a value in its table.
template <HasChoices Enum>
[[nodiscard]] const Choice<Enum> &choice(Enum value)
{
    const auto *found = std::find_if(std::begin(Choices<Enum>::all), std::end(Choices<Enum>::all),
        [value](const Choice<Enum> &entry) { return entry.value == value; });
    Q_ASSERT(found != std::end(Choices<Enum>::all));
    return *found;
}

/// Absent when no value has this text in the settings file.
template <HasChoices Enum>
[[nodiscard]] std::optional<Enum> fromRawValue(const QString &raw)
{
    for (const Choice<Enum> &entry : Choices<Enum>::all) {
        if (raw == QLatin1StringView(entry.raw))
            return entry.value;
    }
    return std::nullopt;
}

template <HasChoices Enum>
[[nodiscard]] QString rawValue(Enum value)
{
    return QLatin1StringView(choice(value).raw);
}

/// In the user's language.
template <HasChoices Enum>
[[nodiscard]] QString label(Enum value)
{
    return QCoreApplication::translate(Choices<Enum>::context, choice(value).label);
}

/// What the settings window says below the label, in the user's language; empty where it says nothing.
template <HasChoices Enum>
[[nodiscard]] QString description(Enum value)
{
    return QCoreApplication::translate(Choices<Enum>::context, choice(value).description);
}

/// Every value, in the order in which it is offered.
template <HasChoices Enum>
[[nodiscard]] const QList<Enum> &allValues()
{
    static const QList<Enum> values = [] {
        QList<Enum> all;
        for (const Choice<Enum> &entry : Choices<Enum>::all)
            all.append(entry.value);
        return all;
    }();
    return values;
}

} // namespace moorline

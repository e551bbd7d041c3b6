#include "settings/WidgetKind.h"

#include <QCoreApplication>

namespace moorline {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("WidgetKind", source);
}

} // namespace

const QList<WidgetKind> &allWidgetKinds()
{
    using enum WidgetKind;
    static const QList<WidgetKind> all{
        clock, calendar, weather, forecast, music, monthCounter, appShortcut, recentApps, pinnedItems};
    return all;
}

QString rawValue(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::clock:
        return QStringLiteral("clock");
    case WidgetKind::calendar:
        return QStringLiteral("calendar");
    case WidgetKind::weather:
        return QStringLiteral("weather");
    case WidgetKind::forecast:
        return QStringLiteral("forecast");
    case WidgetKind::music:
        return QStringLiteral("music");
    case WidgetKind::monthCounter:
        return QStringLiteral("month-counter");
    case WidgetKind::appShortcut:
        return QStringLiteral("app-shortcut");
    case WidgetKind::recentApps:
        return QStringLiteral("recent-apps");
    case WidgetKind::pinnedItems:
        return QStringLiteral("pinned-items");
    }
    return {};
}

QString title(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::clock:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Clock"));
    case WidgetKind::calendar:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Calendar"));
    case WidgetKind::weather:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Weather"));
    case WidgetKind::forecast:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Forecast"));
    case WidgetKind::music:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Now Playing"));
    case WidgetKind::monthCounter:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Year Progress"));
    case WidgetKind::appShortcut:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "App Shortcuts"));
    case WidgetKind::recentApps:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Recent Apps"));
    case WidgetKind::pinnedItems:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Files & Folders"));
    }
    return {};
}

QString description(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::clock:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Time and date"));
    case WidgetKind::calendar:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Weekday and day of month"));
    case WidgetKind::weather:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Current conditions"));
    case WidgetKind::forecast:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Next three days"));
    case WidgetKind::music:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Music & Spotify with transport controls"));
    case WidgetKind::monthCounter:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "How far through the year you are"));
    case WidgetKind::appShortcut:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Your pinned apps"));
    case WidgetKind::recentApps:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "The apps you used last, most recent first"));
    case WidgetKind::pinnedItems:
        return text(QT_TRANSLATE_NOOP("WidgetKind", "Pinned files and folders, Downloads, and Trash"));
    }
    return {};
}

} // namespace moorline

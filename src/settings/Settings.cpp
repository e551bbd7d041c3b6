#include "settings/Settings.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

namespace moorline {

QString WeatherLocation::subtitle() const
{
    QStringList parts;
    for (const auto &part : {admin1, country}) {
        if (part)
            parts.append(*part);
    }
    return parts.join(QStringLiteral(", "));
}

ClockFormat systemClockFormat()
{
    static const QRegularExpression quoted(QStringLiteral("'[^']*'"));
    QString pattern = QLocale::system().timeFormat(QLocale::ShortFormat);
    pattern.remove(quoted);
    // A day period: Qt writes "AP", "ap" or "A" where others write "a", and leaves "B" and "b", with noon and the like,
    // as they are.
    static const QRegularExpression dayPeriod(QStringLiteral("[aAbB]"));
    return pattern.contains(dayPeriod) ? ClockFormat::twelveHour : ClockFormat::twentyFourHour;
}

// Out of line, because GCC 12 takes the list for uninitialised where it is built within another function.
const QList<WidgetKind> &defaultWidgets()
{
    using enum WidgetKind;
    static const QList<WidgetKind> widgets{
        clock, calendar, weather, forecast, music, appShortcut, recentApps, pinnedItems};
    return widgets;
}

const QList<AppShortcut> &defaultShortcuts()
{
    static const QList<AppShortcut> shortcuts{{QStringLiteral("/System/Library/CoreServices/Finder.app"),
        QStringLiteral("com.apple.finder"), QStringLiteral("Finder")}};
    return shortcuts;
}

const Settings &Settings::defaults()
{
    static const Settings settings;
    return settings;
}

} // namespace moorline

#include "settings/Settings.h"

#include <QCoreApplication>
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
    // Qt writes the day period as "AP", "ap" or "A" where others write "a".
    return pattern.contains(u'a', Qt::CaseInsensitive) ? ClockFormat::twelveHour : ClockFormat::twentyFourHour;
}

const QList<AppShortcut> &defaultShortcuts()
{
    static const QList<AppShortcut> shortcuts{{QStringLiteral("/System/Library/CoreServices/Finder.app"),
        QStringLiteral("com.apple.finder"), QStringLiteral("Finder")}};
    return shortcuts;
}

QString label(DockVisibilityMode mode)
{
    switch (mode) {
    case DockVisibilityMode::alwaysVisible:
        return QCoreApplication::translate("DockVisibilityMode", "Always visible");
    case DockVisibilityMode::hideWhenSystemDockAppears:
        return QCoreApplication::translate("DockVisibilityMode", "Hide when the macOS Dock appears");
    }
    return {};
}

QString label(RecentAppsMode mode)
{
    switch (mode) {
    case RecentAppsMode::runningOnly:
        return QCoreApplication::translate("RecentAppsMode", "Only apps that are running");
    case RecentAppsMode::anyState:
        return QCoreApplication::translate("RecentAppsMode", "Recently used apps, open or not");
    }
    return {};
}

QString label(MusicStyle style)
{
    switch (style) {
    case MusicStyle::player:
        return QCoreApplication::translate("MusicStyle", "Player with controls");
    case MusicStyle::compact:
        return QCoreApplication::translate("MusicStyle", "Compact");
    }
    return {};
}

const QList<DockVisibilityMode> &allDockVisibilityModes()
{
    using enum DockVisibilityMode;
    static const QList<DockVisibilityMode> all{alwaysVisible, hideWhenSystemDockAppears};
    return all;
}

const QList<RecentAppsMode> &allRecentAppsModes()
{
    using enum RecentAppsMode;
    static const QList<RecentAppsMode> all{runningOnly, anyState};
    return all;
}

const Settings &Settings::defaults()
{
    static const Settings settings;
    return settings;
}

} // namespace moorline

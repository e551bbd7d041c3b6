#include "platform/linux/location/GeoClueConditions.h"

#include <algorithm>

namespace moorline {

namespace {

constexpr bool everyConditionHasItsRow()
{
    for (std::size_t index = 0; index < geoClueMeanings.size(); ++index) {
        if (std::size_t(geoClueMeanings[index].condition) != index)
            return false;
    }
    return geoClueMeanings.size() == std::size_t(GeoClueCondition::broken) + 1;
}
static_assert(everyConditionHasItsRow());

constexpr QLatin1StringView accessDenied("org.freedesktop.DBus.Error.AccessDenied");

constexpr QLatin1StringView namesOfSilence[] = {
    QLatin1StringView("org.freedesktop.DBus.Error.NoReply"),
    QLatin1StringView("org.freedesktop.DBus.Error.Timeout"),
    QLatin1StringView("org.freedesktop.DBus.Error.TimedOut"),
};

constexpr QLatin1StringView namesOfAbsence[] = {
    QLatin1StringView("org.freedesktop.DBus.Error.ServiceUnknown"),
    QLatin1StringView("org.freedesktop.DBus.Error.NameHasNoOwner"),
    QLatin1StringView("org.freedesktop.DBus.Error.Spawn.ServiceNotFound"),
    QLatin1StringView("org.freedesktop.DBus.Error.FileNotFound"),
    QLatin1StringView("org.freedesktop.DBus.Error.NoServer"),
    QLatin1StringView("org.freedesktop.DBus.Error.Disconnected"),
    // The bus passes on why systemd does not start a unit.
    QLatin1StringView("org.freedesktop.systemd1.NoSuchUnit"),
    QLatin1StringView("org.freedesktop.systemd1.UnitMasked"),
};

/// Starting the service went wrong this time, which says nothing of the next. As they begin.
constexpr QLatin1StringView namesOfFailedStarts[] = {
    QLatin1StringView("org.freedesktop.DBus.Error.Spawn."),
    QLatin1StringView("org.freedesktop.systemd1."),
};

} // namespace

GeoClueCondition conditionOf(const QString &errorName, GeoClueStep step)
{
    const auto isError = [&errorName](QLatin1StringView name) { return errorName == name; };
    const auto beginsError = [&errorName](QLatin1StringView name) { return errorName.startsWith(name); };
    if (errorName == accessDenied)
        return step == GeoClueStep::starting ? GeoClueCondition::refused : GeoClueCondition::forbidden;
    if (std::ranges::any_of(namesOfSilence, isError))
        return GeoClueCondition::silent;
    // One that was there a moment ago has ended by itself, and comes again when it is asked.
    if (std::ranges::any_of(namesOfAbsence, isError))
        return step == GeoClueStep::findingService ? GeoClueCondition::absent : GeoClueCondition::silent;
    if (std::ranges::any_of(namesOfFailedStarts, beginsError))
        return GeoClueCondition::silent;
    return GeoClueCondition::broken;
}

} // namespace moorline

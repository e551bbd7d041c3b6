#include "weather/LocationStatus.h"

#include <QCoreApplication>

namespace moorline {

namespace {

using Availability = LocationService::Availability;

QString translated(const char *text)
{
    return QCoreApplication::translate("LocationStatus", text);
}

} // namespace

QString statusText(Availability availability)
{
    switch (availability) {
    case Availability::notDetermined:
        return translated(QT_TRANSLATE_NOOP("LocationStatus", "Not yet asked."));
    case Availability::authorized:
        return translated(QT_TRANSLATE_NOOP("LocationStatus", "Using Location Services."));
    case Availability::denied:
        return translated(QT_TRANSLATE_NOOP("LocationStatus",
            "Denied — falling back to your IP address. Enable it in System Settings › Privacy & Security › Location "
            "Services."));
    case Availability::restricted:
        return translated(
            QT_TRANSLATE_NOOP("LocationStatus", "Restricted by policy — falling back to your IP address."));
    case Availability::servicesOff:
        return translated(QT_TRANSLATE_NOOP(
            "LocationStatus", "Location Services is switched off system-wide — falling back to your IP address."));
    }
    Q_UNREACHABLE();
}

LocationRemedy remedy(Availability availability)
{
    switch (availability) {
    case Availability::notDetermined:
        return LocationRemedy::askForPermission;
    case Availability::authorized:
        return LocationRemedy::none;
    case Availability::denied:
    case Availability::restricted:
    case Availability::servicesOff:
        return LocationRemedy::openSystemSettings;
    }
    Q_UNREACHABLE();
}

QString title(LocationRemedy remedy)
{
    switch (remedy) {
    case LocationRemedy::none:
        return {};
    case LocationRemedy::askForPermission:
        return translated(QT_TRANSLATE_NOOP("LocationStatus", "Allow Location Access"));
    case LocationRemedy::openSystemSettings:
        return translated(QT_TRANSLATE_NOOP("LocationStatus", "Open Location Settings"));
    }
    Q_UNREACHABLE();
}

QString caseName(Availability availability)
{
    switch (availability) {
    case Availability::notDetermined:
        return QStringLiteral("notDetermined");
    case Availability::authorized:
        return QStringLiteral("authorized");
    case Availability::denied:
        return QStringLiteral("denied");
    case Availability::restricted:
        return QStringLiteral("restricted");
    case Availability::servicesOff:
        return QStringLiteral("servicesOff");
    }
    Q_UNREACHABLE();
}

} // namespace moorline

#pragma once

#include "weather/LocationService.h"

namespace moorline {

/// What can be done about the state of the location service.
enum class LocationRemedy {
    none,
    /// LocationService::requestAuthorization().
    askForPermission,
    /// SystemSettings::open() with SettingsPane::locationServices.
    openSystemSettings,
};

/// What the settings window says of the state.
[[nodiscard]] QString statusText(LocationService::Availability availability);
[[nodiscard]] LocationRemedy remedy(LocationService::Availability availability);
/// The title of the button for it; empty for none.
[[nodiscard]] QString title(LocationRemedy remedy);
/// As the debug log writes it.
[[nodiscard]] QString caseName(LocationService::Availability availability);

} // namespace moorline

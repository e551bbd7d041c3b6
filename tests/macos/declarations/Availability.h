#pragma once

// https://developer.apple.com/documentation/swift/marking-api-availability-in-objective-c
// Of macOS alone: API_AVAILABLE(macos(12.0)), API_DEPRECATED("Use another", macos(10.8, 26.0)).
#define API_AVAILABLE(system) __attribute__((availability(MOORLINE_AVAILABLE_##system)))
#define API_DEPRECATED(text, system) __attribute__((availability(MOORLINE_DEPRECATED_##system, message = text)))
#define MOORLINE_AVAILABLE_macos(since) macos, introduced = since
#define MOORLINE_DEPRECATED_macos(since, until) macos, introduced = since, deprecated = until

// https://developer.apple.com/documentation/xcode/running-code-on-a-specific-version
// What libraries ask about the oldest system, as the compiler was told of it.
#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define __MAC_OS_X_VERSION_MAX_ALLOWED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__

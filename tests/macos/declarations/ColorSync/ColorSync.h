#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {

// https://developer.apple.com/documentation/colorsync/cgdisplaycreateuuidfromdisplayid(_:)
// The caller owns the identifier.
CFUUIDRef CGDisplayCreateUUIDFromDisplayID(uint32_t displayID) __attribute__((cf_returns_retained));

} // extern "C"

#pragma once

// https://developer.apple.com/documentation/xcode/running-code-on-a-specific-version
// As a Mac has them; a Mac alone is what is compiled for.
#define TARGET_OS_MAC 1
#define TARGET_OS_OSX 1
#define TARGET_OS_IPHONE 0

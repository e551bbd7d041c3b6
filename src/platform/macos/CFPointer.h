#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <memory>
#include <type_traits>

namespace moorline {

struct CFReleaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns one reference to a Core Foundation or Core Graphics object (CFPointer<CFArrayRef>), as "Create" and "Copy"
/// functions hand it out.
template <typename Ref>
using CFPointer = std::unique_ptr<std::remove_pointer_t<Ref>, CFReleaser>;

} // namespace moorline

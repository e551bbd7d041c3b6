#pragma once

#import <AppKit/AppKit.h>

namespace moorline {

/// The release of the button that an event is of. The system takes the real one where a menu or a drag follows from a
/// press, and the toolkit takes the button for held until it is told. Nil for an event of no button that is held.
[[nodiscard]] NSEvent *releaseAfter(NSEvent *event);

} // namespace moorline

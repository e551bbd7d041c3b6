#pragma once

#import <AppKit/AppKit.h>

namespace moorline {

/// The release that belongs to a press. The system takes the real one where a menu or a drag follows, and the toolkit
/// takes the button for held until it is told. Nil unless `event` is a press of the left or the right button.
[[nodiscard]] NSEvent *releaseAfter(NSEvent *event);

} // namespace moorline

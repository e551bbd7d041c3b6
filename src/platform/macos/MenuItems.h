#pragma once

#import <AppKit/AppKit.h>

#include "platform/Menu.h"

namespace moorline {

/// What is to be done with the action of an item that is chosen.
using Perform = std::function<void(const std::function<void()> &action)>;

/// Puts items into a menu, in place of those that it had.
void fill(NSMenu *menu, const Menu &items, const Perform &perform);

} // namespace moorline

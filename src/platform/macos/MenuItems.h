#pragma once

#import <AppKit/AppKit.h>

#include "platform/Menu.h"

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace moorline {

/// Puts items into a menu, in place of those that it had. What is chosen does its action from the event loop, when the
/// menu is gone; nothing once `context` is gone.
void fill(NSMenu *menu, const Menu &items, QObject &context);

} // namespace moorline

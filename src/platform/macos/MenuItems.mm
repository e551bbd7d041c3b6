#import "platform/macos/MenuItems.h"

#include "platform/KeyEquivalent.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/MoorlineMenuAction.h"

namespace moorline {

namespace {

NSEventModifierFlags modifiersOf(const KeyEquivalent &keys)
{
    NSEventModifierFlags result = 0;
    if (keys.command)
        result |= NSEventModifierFlagCommand;
    if (keys.shift)
        result |= NSEventModifierFlagShift;
    if (keys.option)
        result |= NSEventModifierFlagOption;
    if (keys.control)
        result |= NSEventModifierFlagControl;
    return result;
}

void setShortcut(NSMenuItem *native, const QKeySequence &shortcut)
{
    const auto keys = keyEquivalentOf(shortcut);
    if (!keys)
        return;
    native.keyEquivalent = toNSString(keys->character);
    native.keyEquivalentModifierMask = modifiersOf(*keys);
}

/// The item keeps what it calls: its target is no owner.
void setAction(NSMenuItem *native, const std::function<void()> &action, const Perform &perform)
{
    MoorlineMenuAction *call = [[MoorlineMenuAction alloc] initWithAction:[action, perform] { perform(action); }];
    native.representedObject = call;
    native.target = call;
    native.action = @selector(choose:);
}

NSMenuItem *itemFor(const MenuItem &item, const Perform &perform)
{
    if (item.isSeparator())
        return [NSMenuItem separatorItem];
    NSMenuItem *native = [[NSMenuItem alloc] initWithTitle:toNSString(item.title) action:nil keyEquivalent:@""];
    native.identifier = toNSString(item.identifier);
    native.state = item.isChecked ? NSControlStateValueOn : NSControlStateValueOff;
    native.enabled = item.isEnabled();
    if (!item.symbol.isEmpty())
        native.image = [NSImage imageWithSystemSymbolName:toNSString(item.symbol) accessibilityDescription:nil];
    setShortcut(native, item.shortcut);
    if (item.action)
        setAction(native, item.action, perform);
    return native;
}

} // namespace

void fill(NSMenu *menu, const Menu &items, const Perform &perform)
{
    menu.autoenablesItems = NO;
    [menu removeAllItems];
    for (const MenuItem &item : items)
        [menu addItem:itemFor(item, perform)];
}

} // namespace moorline

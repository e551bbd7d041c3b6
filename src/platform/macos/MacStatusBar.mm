#import "platform/macos/MacStatusBar.h"

#import "platform/macos/Conversions.h"
#import "platform/macos/MenuItems.h"
#import "platform/macos/MoorlineStatusMenu.h"

namespace moorline {

namespace {

/// A template: the menu bar gives it the colour that suits its own.
NSImage *imageFor(const StatusBarItem &item)
{
    NSImage *image = [NSImage imageWithSystemSymbolName:toNSString(item.symbol)
                               accessibilityDescription:toNSString(item.name)];
    [image setTemplate:YES];
    return image;
}

} // namespace

MacStatusBar::~MacStatusBar()
{
    remove();
}

void MacStatusBar::show(StatusBarItem item)
{
    remove();
    m_item = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    m_item.button.image = imageFor(item);
    m_item.button.toolTip = toNSString(item.name);
    m_filler = [[MoorlineStatusMenu alloc] initWithFilling:[this, content = std::move(item.menu)](NSMenu *menu) {
        fill(menu, content(), [this](const std::function<void()> &action) { doSoon(action); });
    }];
    NSMenu *menu = [[NSMenu alloc] initWithTitle:toNSString(item.name)];
    menu.delegate = m_filler;
    m_item.menu = menu;
}

void MacStatusBar::doSoon(const std::function<void()> &action)
{
    QMetaObject::invokeMethod(&m_context, action, Qt::QueuedConnection);
}

void MacStatusBar::remove()
{
    if (m_item)
        [NSStatusBar.systemStatusBar removeStatusItem:m_item];
    m_item = nil;
}

} // namespace moorline

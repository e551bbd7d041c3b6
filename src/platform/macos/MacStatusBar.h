#pragma once

#include "platform/StatusBar.h"

#import <AppKit/AppKit.h>

#include <QObject>

@class MoorlineStatusMenu;

namespace moorline {

/// The right end of the menu bar. It is there as long as the system is, whatever screen it is on.
class MacStatusBar final : public StatusBar {
public:
    MacStatusBar() = default;
    ~MacStatusBar() override;
    Q_DISABLE_COPY_MOVE(MacStatusBar)

    void show(StatusBarItem item) override;

private:
    /// From the event loop, when the menu is gone.
    void doSoon(const std::function<void()> &action);
    void remove();

    NSStatusItem *m_item = nil;
    /// The menu does not own it.
    MoorlineStatusMenu *m_filler = nil;
    /// What is chosen is done as long as this lives.
    QObject m_context;
};

} // namespace moorline

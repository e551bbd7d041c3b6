#pragma once

#import <AppKit/AppKit.h>

#include <QtGlobal>
#include <functional>

namespace moorline {

/// Calls back for each event of some kinds, whichever application it goes to, until destroyed. Pointer events need no
/// permission for this.
class EventMonitor final {
public:
    EventMonitor(NSEventMask mask, const std::function<void()> &callback);
    ~EventMonitor();
    Q_DISABLE_COPY_MOVE(EventMonitor)

private:
    const id m_elsewhere;
    const id m_here;
};

} // namespace moorline

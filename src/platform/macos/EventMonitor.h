#pragma once

#import <AppKit/AppKit.h>

#include <QtGlobal>
#include <functional>

namespace moorline {

/// Calls back for each event of some kinds, whichever application it goes to, until destroyed. Pointer events need no
/// permission for this; keys of other applications are told of where this one is trusted for accessibility.
class EventMonitor final {
public:
    EventMonitor(NSEventMask mask, const std::function<void(NSEvent *)> &callback);
    ~EventMonitor();
    Q_DISABLE_COPY_MOVE(EventMonitor)

private:
    const id m_elsewhere;
    const id m_here;
};

} // namespace moorline

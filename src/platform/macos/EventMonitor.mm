#import "platform/macos/EventMonitor.h"

namespace moorline {

namespace {

id monitorOtherApplications(NSEventMask mask, std::function<void(NSEvent *)> callback)
{
    return [NSEvent addGlobalMonitorForEventsMatchingMask:mask handler:^(NSEvent *event) { callback(event); }];
}

id monitorThisApplication(NSEventMask mask, std::function<void(NSEvent *)> callback)
{
    return [NSEvent addLocalMonitorForEventsMatchingMask:mask
                                                 handler:^NSEvent *(NSEvent *event) {
                                                     callback(event);
                                                     return event;
                                                 }];
}

void remove(id monitor)
{
    // There is none where the window server refused it.
    if (monitor)
        [NSEvent removeMonitor:monitor];
}

} // namespace

EventMonitor::EventMonitor(NSEventMask mask, const std::function<void(NSEvent *)> &callback)
    : m_elsewhere(monitorOtherApplications(mask, callback))
    , m_here(monitorThisApplication(mask, callback))
{
}

EventMonitor::~EventMonitor()
{
    remove(m_elsewhere);
    remove(m_here);
}

} // namespace moorline

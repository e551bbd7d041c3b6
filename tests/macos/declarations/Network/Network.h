#pragma once

#include <dispatch/dispatch.h>

// https://developer.apple.com/documentation/network/nw_path_t
@protocol OS_nw_path <NSObject>
@end
typedef NSObject<OS_nw_path> *nw_path_t;

// https://developer.apple.com/documentation/network/nw_path_status_t
typedef enum {
    nw_path_status_invalid = 0,
    nw_path_status_satisfied = 1,
    nw_path_status_unsatisfied = 2,
    nw_path_status_satisfiable = 3,
} nw_path_status_t;

// https://developer.apple.com/documentation/network/nw_path_monitor_t
@protocol OS_nw_path_monitor <NSObject>
@end
typedef NSObject<OS_nw_path_monitor> *nw_path_monitor_t;
// https://developer.apple.com/documentation/network/nw_path_monitor_update_handler_t
typedef void (^nw_path_monitor_update_handler_t)(nw_path_t path);

extern "C" {

// https://developer.apple.com/documentation/network/nw_path_get_status(_:)
nw_path_status_t nw_path_get_status(nw_path_t path) API_AVAILABLE(macos(10.14));

// https://developer.apple.com/documentation/network/nw_path_monitor_create()
nw_path_monitor_t nw_path_monitor_create(void) __attribute__((ns_returns_retained)) API_AVAILABLE(macos(10.14));
// https://developer.apple.com/documentation/network/nw_path_monitor_set_queue(_:_:)
void nw_path_monitor_set_queue(nw_path_monitor_t monitor, dispatch_queue_t queue) API_AVAILABLE(macos(10.14));
// https://developer.apple.com/documentation/network/nw_path_monitor_set_update_handler(_:_:)
void nw_path_monitor_set_update_handler(nw_path_monitor_t monitor, nw_path_monitor_update_handler_t update_handler)
    API_AVAILABLE(macos(10.14));
// https://developer.apple.com/documentation/network/nw_path_monitor_start(_:)
void nw_path_monitor_start(nw_path_monitor_t monitor) API_AVAILABLE(macos(10.14));
// https://developer.apple.com/documentation/network/nw_path_monitor_cancel(_:)
void nw_path_monitor_cancel(nw_path_monitor_t monitor) API_AVAILABLE(macos(10.14));

} // extern "C"

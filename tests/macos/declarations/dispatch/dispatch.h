#pragma once

#include <objc/objc.h>

// https://developer.apple.com/documentation/dispatch/dispatch_queue_t
@protocol OS_dispatch_queue <NSObject>
@end
typedef NSObject<OS_dispatch_queue> *dispatch_queue_t;

// https://developer.apple.com/documentation/dispatch/dispatch_queue_main_t
@protocol OS_dispatch_queue_main <OS_dispatch_queue>
@end
typedef NSObject<OS_dispatch_queue_main> *dispatch_queue_main_t;

// https://developer.apple.com/documentation/dispatch/dispatch_queue_attr_t
@protocol OS_dispatch_queue_attr <NSObject>
@end
typedef NSObject<OS_dispatch_queue_attr> *dispatch_queue_attr_t;
// https://developer.apple.com/documentation/dispatch/dispatch_queue_serial
#define DISPATCH_QUEUE_SERIAL nullptr

// https://developer.apple.com/documentation/dispatch/dispatch_block_t
typedef void (^dispatch_block_t)(void);

extern "C" {

// https://developer.apple.com/documentation/dispatch/dispatch_queue_create
dispatch_queue_t dispatch_queue_create(const char *label, dispatch_queue_attr_t attr)
    __attribute__((ns_returns_retained));
// https://developer.apple.com/documentation/dispatch/dispatch_get_main_queue
dispatch_queue_main_t dispatch_get_main_queue(void);
// https://developer.apple.com/documentation/dispatch/dispatch_async
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);

} // extern "C"

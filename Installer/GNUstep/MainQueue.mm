#include <dispatch/dispatch.h>

#import <AppKit/AppKit.h>

#include "WorkQueue.hpp"

/// Brings the queued work to the main thread's run loop.
@interface VantMainQueue : NSObject {
    vant::WorkQueue work;
    NSArray *modes;
}
+ (VantMainQueue *)queue;
- (void)add:(vant::WorkItem)item;
@end

@implementation VantMainQueue

+ (VantMainQueue *)queue {
    static VantMainQueue *const queue = [[VantMainQueue alloc] init];
    return queue;
}

- (id)init {
    if ((self = [super init]))
        modes = [[NSArray alloc] initWithObjects:NSDefaultRunLoopMode, NSRunLoopCommonModes, NSEventTrackingRunLoopMode,
                                                 NSModalPanelRunLoopMode, nil];
    return self;
}

- (void)add:(vant::WorkItem)item {
    if (work.add(item))
        [self wakeUp];
}

- (void)wakeUp {
    // The caller may be a thread that has no pool.
    @autoreleasepool {
        [self performSelectorOnMainThread:@selector(drain) withObject:nil waitUntilDone:NO modes:modes];
    }
}

// The queue is serial: work that runs a run loop of its own holds back what stands behind it, as on the platform.
- (void)drain {
    auto items = work.startBatch();
    if (!items)
        return;
    vant::Batch batch(work, std::move(*items), [self] { [self wakeUp]; });
    while (const auto item = batch.next()) {
        @autoreleasepool {
            item->work(item->context);
        }
    }
}

@end

dispatch_queue_t dispatch_get_main_queue() {
    return reinterpret_cast<dispatch_queue_t>([VantMainQueue queue]);
}

void dispatch_async_f(dispatch_queue_t /*queue*/, void *context, dispatch_function_t work) {
    [[VantMainQueue queue] add:vant::WorkItem{.work = work, .context = context}];
}

#include <dispatch/dispatch.h>

#import <AppKit/AppKit.h>

#include <sys/eventfd.h>

#include "GNUstep/process/Uninterrupted.hpp"
#include "GNUstep/queue/WorkQueue.hpp"

/// Brings the queued work to the main thread's run loop, which watches one event descriptor for it. Performing a
/// message on the main thread would not do: GNUstep serves such messages in the default mode alone, and performs one
/// that the main thread sends to itself at once when no run loop has run yet.
@interface VantMainQueue : NSObject <RunLoopEvents> {
    vant::WorkQueue work;
    int wakeUps;
}
+ (VantMainQueue *)queue;
- (void)add:(vant::WorkItem)item;
@end

@implementation VantMainQueue

+ (void)load {
    @autoreleasepool {
        [[self queue] performSelectorOnMainThread:@selector(watch) withObject:nil waitUntilDone:NO];
    }
}

+ (VantMainQueue *)queue {
    static VantMainQueue *const queue = [[VantMainQueue alloc] init];
    return queue;
}

- (id)init {
    if ((self = [super init]))
        wakeUps = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return self;
}

- (void)watch {
    NSArray *modes =
        [NSArray arrayWithObjects:NSDefaultRunLoopMode, NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode, nil];
    for (NSString *mode in modes)
        [[NSRunLoop currentRunLoop] addEvent:reinterpret_cast<void *>(static_cast<intptr_t>(wakeUps))
                                        type:ET_RDESC
                                     watcher:self
                                     forMode:mode];
}

- (void)add:(vant::WorkItem)item {
    if (work.add(item))
        [self wakeUp];
}

- (void)wakeUp {
    (void)vant::uninterrupted([self] { return eventfd_write(wakeUps, 1); });
}

- (void)receivedEvent:(void *)data type:(RunLoopEventType)type extra:(void *)extra forMode:(NSString *)mode {
    (void)data, (void)type, (void)extra, (void)mode;
    eventfd_t count = 0;
    (void)vant::uninterrupted([&] { return eventfd_read(wakeUps, &count); });
    [self drain];
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

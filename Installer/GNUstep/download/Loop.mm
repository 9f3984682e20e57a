#import "GNUstep/download/Loop.h"
#import <AppKit/AppKit.h>

static NSString *const VantDownloadLoopKey = @"VantDownloadLoop";

@interface VantDownloadLoop (Watching)
- (void)updateWatching;
- (void)setWatching:(BOOL)watching;
@end

@implementation VantDownloadLoop

+ (VantDownloadLoop *)currentLoop {
    NSMutableDictionary *threadObjects = [[NSThread currentThread] threadDictionary];
    VantDownloadLoop *loop = [threadObjects objectForKey:VantDownloadLoopKey];
    if (!loop) {
        loop = [[[VantDownloadLoop alloc] init] autorelease];
        [threadObjects setObject:loop forKey:VantDownloadLoopKey];
    }
    return loop;
}

- (instancetype)init {
    self = [super init];
    if (self) {
        // Not retained: the thread owns this object. Whoever keeps the thread keeps its objects too, so its end is not
        // theirs.
        _thread = [NSThread currentThread];
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(threadWillExit:)
                                                     name:NSThreadWillExitNotification
                                                   object:_thread];
    }
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)threadWillExit:(NSNotification *)notification {
    _engine.cancelAll();
    [self updateWatching];
    [[_thread threadDictionary] removeObjectForKey:VantDownloadLoopKey];
}

- (NSThread *)thread {
    return _thread;
}

- (std::shared_ptr<vant::Transfer>)startRequest:(vant::DownloadRequest)request
                                       listener:(std::shared_ptr<vant::DownloadListener>)listener {
    auto transfer = _engine.start(std::move(request), std::move(listener));
    [self updateWatching];
    return transfer;
}

- (void)setDestination:(std::string)path existing:(vant::Existing)existing of:(vant::Transfer &)transfer {
    _engine.setDestination(transfer, std::move(path), existing);
}

- (void)cancel:(vant::Transfer &)transfer {
    _engine.cancel(transfer);
    [self updateWatching];
}

- (void)receivedEvent:(void *)data type:(RunLoopEventType)type extra:(void *)extra forMode:(NSString *)mode {
    [[self retain] autorelease];
    @try {
        _engine.perform();
    } @finally {
        [self updateWatching];
    }
}

- (void)updateWatching {
    if (_engine.busy() != _watching)
        [self setWatching:_engine.busy()];
}

- (void)setWatching:(BOOL)watching {
    NSRunLoop *runLoop = [NSRunLoop currentRunLoop];
    void *descriptor = reinterpret_cast<void *>(static_cast<intptr_t>(_engine.descriptor()));
    NSString *modes[] = {NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode};
    for (NSString *mode : modes) {
        if (watching)
            [runLoop addEvent:descriptor type:ET_RDESC watcher:self forMode:mode];
        else
            [runLoop removeEvent:descriptor type:ET_RDESC forMode:mode all:YES];
    }
    _watching = watching;
}

@end

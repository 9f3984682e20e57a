#pragma once
#include "GNUstep/download/Engine.hpp"
#import <Foundation/Foundation.h>

/// The downloads of one thread, on that thread's run loop: it watches the engine's descriptor while a download runs,
/// and nothing otherwise, so that an idle thread's run loop can end.
@interface VantDownloadLoop : NSObject <RunLoopEvents> {
    vant::DownloadEngine _engine;
    NSThread *_thread;
    BOOL _watching;
}

/// The calling thread's own; it goes with the thread, and its unfinished downloads with it.
+ (VantDownloadLoop *)currentLoop;

/// The thread it belongs to, on which alone it is used.
- (NSThread *)thread;

- (std::shared_ptr<vant::Transfer>)startRequest:(vant::DownloadRequest)request
                                       listener:(std::shared_ptr<vant::DownloadListener>)listener;
- (void)setDestination:(std::string)path existing:(vant::Existing)existing of:(vant::Transfer &)transfer;
- (void)cancel:(vant::Transfer &)transfer;

@end

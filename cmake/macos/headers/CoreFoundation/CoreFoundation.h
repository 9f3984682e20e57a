#pragma once
#import <Foundation/Basics.h>

/// The one use of a run loop that Foundation has no words for.

typedef struct __CFRunLoop *CFRunLoopRef;

PLATFORM_EXPORT CFRunLoopRef CFRunLoopGetCurrent(void);
PLATFORM_EXPORT CFRunLoopRef CFRunLoopGetMain(void);
PLATFORM_EXPORT void CFRunLoopStop(CFRunLoopRef loop);

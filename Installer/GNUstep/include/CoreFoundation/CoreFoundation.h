#pragma once

/// The one use of a run loop that Foundation has no words for.

extern "C" {

typedef struct VantRunLoop *CFRunLoopRef;

/// The calling thread's run loop.
CFRunLoopRef CFRunLoopGetCurrent(void);

/// Makes the current `runMode:beforeDate:` of the loop return, so that whoever runs the loop gets control back. An
/// application's event loop looks for its next event and goes on. Nothing happens when the loop is not running. On the
/// loop's own thread.
void CFRunLoopStop(CFRunLoopRef loop);

} // extern "C"

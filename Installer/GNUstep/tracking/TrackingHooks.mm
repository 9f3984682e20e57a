#import "GNUstep/tracking/Tracking.h"

#include "GNUstep/Hook.hpp"

// Where GNUstep tells of what concerns tracking areas: the events that reach a window, the views that come into one or
// change their place in it, the views that go. Each hook calls the operation that it stands before.

namespace {

using EventSender = void (*)(NSWindow *, SEL, NSEvent *);
using ViewMessage = void (*)(NSView *, SEL);

EventSender originalSendEvent;
ViewMessage originalRebuild;
ViewMessage originalDidMove;
ViewMessage originalDealloc;

void handleEvent(NSWindow *window, NSEvent *event) {
    switch ([event type]) {
    case NSMouseMoved:
    case NSLeftMouseDragged:
    case NSLeftMouseUp:
        vant::followPointer(window, [event locationInWindow], true, event);
        return;
    case NSAppKitDefined:
        if ([event subtype] == GSAppKitWindowLeave)
            vant::followPointer(window, [event locationInWindow], false, event);
        return;
    default:
        return;
    }
}

void sendEvent(NSWindow *window, SEL command, NSEvent *event) {
    // The window may close and go while it handles the event.
    [window retain];
    originalSendEvent(window, command, event);
    handleEvent(window, event);
    [window release];
}

// Sent when a view is drawn or asked for its place after a change. GNUstep marks the change itself by calling the
// implementation straight, where no hook is reached.
void rebuildCoordinates(NSView *view, SEL command) {
    originalRebuild(view, command);
    vant::scheduleTrackingUpdate([view window]);
}

void didMoveToWindow(NSView *view, SEL command) {
    originalDidMove(view, command);
    vant::scheduleTrackingUpdate([view window]);
}

/// Stands before one of the operations that give a view another frame or other bounds; the slot tells operations of the
/// same kind of value apart. A view that is not drawn afterwards is never asked for its place, so this has to tell.
template<class Value, int Slot>
struct GeometryHook {
    using Setter = void (*)(NSView *, SEL, Value);
    inline static Setter original;

    static void set(NSView *view, SEL command, Value value) {
        original(view, command, value);
        vant::scheduleTrackingUpdate([view window]);
    }
};

void deallocate(NSView *view, SEL command) {
    vant::forgetView(view);
    originalDealloc(view, command);
}

template<class Value, int Slot>
void hookSetter(SEL name) {
    using Hook = GeometryHook<Value, Slot>;
    Hook::original = vant::hook([NSView class], name, &Hook::set);
}

} // namespace

/// Sets the hooks, and hears when windows and the application become active or cease to be.
@interface VantTrackingHooks : NSObject
@end

@implementation VantTrackingHooks

+ (void)load {
    @autoreleasepool {
        originalSendEvent = vant::hook([NSWindow class], @selector(sendEvent:), &sendEvent);
        originalRebuild = vant::hook([NSView class], @selector(_rebuildCoordinates), &rebuildCoordinates);
        originalDidMove = vant::hook([NSView class], @selector(_viewDidMoveToWindow), &didMoveToWindow);
        originalDealloc = vant::hook([NSView class], @selector(dealloc), &deallocate);
        hookSetter<NSRect, 0>(@selector(setFrame:));
        hookSetter<NSRect, 1>(@selector(setBounds:));
        hookSetter<NSPoint, 0>(@selector(setFrameOrigin:));
        hookSetter<NSPoint, 1>(@selector(setBoundsOrigin:));
        hookSetter<NSSize, 0>(@selector(setFrameSize:));
        hookSetter<NSSize, 1>(@selector(setBoundsSize:));
        NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
        for (NSString *name in
             [NSArray arrayWithObjects:NSWindowDidBecomeKeyNotification, NSWindowDidResignKeyNotification, nil])
            [center addObserver:self selector:@selector(keyWindowChanged:) name:name object:nil];
        for (NSString *name in [NSArray arrayWithObjects:NSApplicationDidBecomeActiveNotification,
                                                         NSApplicationDidResignActiveNotification, nil])
            [center addObserver:self selector:@selector(applicationChanged:) name:name object:nil];
    }
}

+ (void)updateWindow:(NSWindow *)window {
    const NSPoint location = [window mouseLocationOutsideOfEventStream];
    const NSRect frame = [window frame];
    const bool over = NSPointInRect(location, NSMakeRect(0, 0, NSWidth(frame), NSHeight(frame)));
    vant::followPointer(window, location, over, [NSApp currentEvent]);
}

+ (void)keyWindowChanged:(NSNotification *)notification {
    [self updateWindow:[notification object]];
}

+ (void)applicationChanged:(NSNotification *)notification {
    (void)notification;
    for (NSWindow *window in [NSApp windows])
        [self updateWindow:window];
}

@end

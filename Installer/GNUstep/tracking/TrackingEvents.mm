#import "GNUstep/tracking/Tracking.h"

#include "GNUstep/tracking/TrackingRules.hpp"

namespace vant {
namespace {

TrackingSurroundings trackingSurroundings(NSView *view) {
    return {
        .firstResponder = [[view window] firstResponder] == view,
        .keyWindow = [[view window] isKeyWindow] != NO,
        .activeApplication = [NSApp isActive] != NO,
    };
}

// An area may be larger than its view, but not than what the view's surroundings let be seen of it.
bool isCoveredBySurroundings(NSView *view, NSPoint location) {
    NSView *superview = [view superview];
    return superview != nil && ![superview mouse:[superview convertPoint:location fromView:nil]
                                          inRect:[superview visibleRect]];
}

NSEvent *trackingEvent(NSEventType type, const TrackedArea &tracked, NSPoint location, NSEvent *cause) {
    return [NSEvent enterExitEventWithType:type
                                  location:location
                             modifierFlags:[cause modifierFlags]
                                 timestamp:[cause timestamp]
                              windowNumber:[[tracked.view window] windowNumber]
                                   context:nil
                               eventNumber:0
                            trackingNumber:reinterpret_cast<NSInteger>(tracked.area)
                                  userData:[tracked.area userInfo]];
}

void send(SEL message, id owner, NSEvent *event) {
    if ([owner respondsToSelector:message])
        [owner performSelector:message withObject:event];
}

// The handler of an earlier message may have removed the area.
bool isStillTracked(const TrackedArea &tracked) {
    return areaAt(reinterpret_cast<NSInteger>(tracked.area)) != nil;
}

void sendLeaving(const TrackedArea &tracked, const TrackingMessages &messages, NSPoint location, NSEvent *cause) {
    if (messages.cursorReset)
        [[NSCursor arrowCursor] set];
    if (messages.exited)
        send(@selector(mouseExited:), [tracked.area owner], trackingEvent(NSMouseExited, tracked, location, cause));
}

void sendArriving(const TrackedArea &tracked, const TrackingMessages &messages, NSPoint location, NSEvent *cause) {
    id owner = [tracked.area owner];
    if (messages.entered)
        send(@selector(mouseEntered:), owner, trackingEvent(NSMouseEntered, tracked, location, cause));
    if (messages.cursorUpdate && isStillTracked(tracked))
        send(@selector(cursorUpdate:), owner, trackingEvent(NSCursorUpdate, tracked, location, cause));
    if (messages.moved && [cause type] == NSMouseMoved)
        send(@selector(mouseMoved:), owner, cause);
}

struct Change {
    TrackedArea tracked;
    TrackingMessages messages;
};

std::vector<Change> trackingChanges(NSWindow *window, NSPoint location, bool present, bool dragging) {
    std::vector<Change> changes;
    for (const TrackedArea &each : trackedAreas(nil)) {
        const TrackingOptions options = trackingOptions([each.area options]);
        if ([each.view window] != window || (dragging && !options.duringDrag))
            continue;
        const bool inside = present && isInside(each, location);
        setInside(each.view, each.area, inside);
        changes.push_back({.tracked = each, .messages = messagesFor(options, each.inside, inside)});
    }
    return changes;
}

} // namespace

bool isInside(const TrackedArea &tracked, NSPoint location) {
    const NSTrackingAreaOptions bits = [tracked.area options];
    if ([tracked.view isHiddenOrHasHiddenAncestor] || isCoveredBySurroundings(tracked.view, location) ||
        !isActive(trackingOptions(bits), trackingSurroundings(tracked.view)))
        return false;
    const NSRect rect = (bits & NSTrackingInVisibleRect) != 0 ? [tracked.view visibleRect] : [tracked.area rect];
    return [tracked.view mouse:[tracked.view convertPoint:location fromView:nil] inRect:rect] != NO;
}

void followPointer(NSWindow *window, NSPoint location, bool present, NSEvent *event) {
    const bool dragging = event != nil && [event type] == NSLeftMouseDragged;
    const std::vector<Change> changes = trackingChanges(window, location, present, dragging);
    for (const Change &change : changes)
        if (isStillTracked(change.tracked))
            sendLeaving(change.tracked, change.messages, location, event);
    for (const Change &change : changes)
        if (isStillTracked(change.tracked))
            sendArriving(change.tracked, change.messages, location, event);
}

} // namespace vant

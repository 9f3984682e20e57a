#pragma once

/// The platform's tracking areas. This header stands before GNUstep's own, which declares the class with option values
/// of other numbers and gives views no operations for it.

#import <AppKit/NSEvent.h>
#import <AppKit/NSView.h>

@class GSTrackingRect;

enum {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingMouseMoved = 0x02,
    NSTrackingCursorUpdate = 0x04,
    NSTrackingActiveWhenFirstResponder = 0x10,
    NSTrackingActiveInKeyWindow = 0x20,
    NSTrackingActiveInActiveApp = 0x40,
    NSTrackingActiveAlways = 0x80,
    NSTrackingAssumeInside = 0x100,
    NSTrackingInVisibleRect = 0x200,
    NSTrackingEnabledDuringMouseDrag = 0x400,
};
typedef NSUInteger NSTrackingAreaOptions;

/// A rectangle of a view over which the pointer is followed. The owner, which is not retained, gets `mouseEntered:`,
/// `mouseExited:`, `mouseMoved:` and `cursorUpdate:`, as far as the options ask for them.
@interface NSTrackingArea : NSObject <NSCoding, NSCopying> {
    // GNUstep's own fields, in its own order.
    NSDictionary *_userInfo;
    GSTrackingRect *_trackingRect;
    NSTrackingAreaOptions _options;
}
- (id)initWithRect:(NSRect)rect
           options:(NSTrackingAreaOptions)options
             owner:(id)owner
          userInfo:(NSDictionary *)userInfo;
- (NSTrackingAreaOptions)options;
- (id)owner;
- (NSRect)rect;
- (NSDictionary *)userInfo;
@end

/// Main thread.
@interface NSView (VantTrackingAreas)
/// Follows the pointer over the area until it is removed. The view retains it.
- (void)addTrackingArea:(NSTrackingArea *)area;
/// Ends it; no event of the area comes any more, not even the exit.
- (void)removeTrackingArea:(NSTrackingArea *)area;
/// The areas of the view, in the order in which they were added.
- (NSArray *)trackingAreas;
/// Sent when the view has come into a window, and when its place or its bounds in the window have changed. Does
/// nothing.
- (void)updateTrackingAreas;
@end

@interface NSEvent (VantTrackingAreas)
/// The area that an enter, exit, move or cursor event is about; nil when there is none or it is gone.
- (NSTrackingArea *)trackingArea;
@end

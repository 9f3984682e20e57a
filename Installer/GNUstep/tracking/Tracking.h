#pragma once
#import <AppKit/AppKit.h>
#include <vector>

namespace vant {

/// One tracking area of a view, and whether the pointer was inside it when last looked at.
struct TrackedArea {
    NSView *view;
    NSTrackingArea *area;
    bool inside;
};

/// Where a view was when its areas were last brought up to date.
struct TrackedPlace {
    NSWindow *window = nil;
    NSRect bounds{};
    NSRect boundsInWindow{};
    NSRect visible{};
};

// The store of all views' areas. Any thread, for a view may be freed on any.

/// Adds an area, which is retained.
void addTrackedArea(const TrackedArea &tracked);
/// Removes and releases an area; false when the view does not have it.
bool removeTrackedArea(NSView *view, NSTrackingArea *area);
/// Notes whether the pointer is inside and tells whether it was; no area that has been removed is noted.
void setInside(NSView *view, NSTrackingArea *area, bool inside);
/// Copies of the areas of one view, or with nil of all, in the order in which they were added. Views and areas are
/// retained and autoreleased.
[[nodiscard]] std::vector<TrackedArea> trackedAreas(NSView *view);
/// The area with that address, when it still belongs to a view.
[[nodiscard]] NSTrackingArea *areaAt(NSInteger address);
/// Notes the view's place; false when it is the one noted before.
bool recordPlace(NSView *view, const TrackedPlace &place);
/// Forgets everything about a view.
void forgetView(NSView *view);

/// Whether the pointer, at that point of the view's window, is inside the area.
[[nodiscard]] bool isInside(const TrackedArea &tracked, NSPoint location);
/// Looks at all areas of the window and sends what follows. `present`: the pointer is over the window.
void followPointer(NSWindow *window, NSPoint location, bool present, NSEvent *event);
/// Sends updateTrackingAreas to the views of the window that have moved, later, once for many calls.
void scheduleTrackingUpdate(NSWindow *window);

} // namespace vant

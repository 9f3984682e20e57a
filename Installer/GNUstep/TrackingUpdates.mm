#import "Tracking.h"

#include <dispatch/dispatch.h>
#include <mutex>
#include <set>
#include <utility>

namespace vant {
namespace {

std::mutex changedMutex;

/// Windows some view of which has changed its place; retained.
std::set<NSWindow *> &changedWindows() {
    static auto *const windows = new std::set<NSWindow *>;
    return *windows;
}

bool answersForItself(NSView *view) {
    SEL name = @selector(updateTrackingAreas);
    return [view methodForSelector:name] != [NSView instanceMethodForSelector:name];
}

TrackedPlace placeOf(NSView *view) {
    return {
        .window = [view window],
        .bounds = [view bounds],
        .boundsInWindow = [view convertRect:[view bounds] toView:nil],
        .visible = [view visibleRect],
    };
}

void updateViews(NSView *view) {
    if (answersForItself(view) && notePlace(view, placeOf(view)))
        [view updateTrackingAreas];
    // A copy: a view may change its subviews while it updates.
    for (NSView *subview in [NSArray arrayWithArray:[view subviews]])
        updateViews(subview);
}

void updateChangedWindows(void * /*context*/) {
    std::set<NSWindow *> windows;
    {
        const std::scoped_lock lock(changedMutex);
        windows = std::exchange(changedWindows(), {});
    }
    for (NSWindow *window : windows) {
        updateViews([[window contentView] superview]);
        [window release];
    }
}

} // namespace

void placesHaveChanged(NSWindow *window) {
    if (window == nil)
        return;
    bool first = false;
    {
        const std::scoped_lock lock(changedMutex);
        first = changedWindows().empty();
        if (changedWindows().insert(window).second)
            [window retain];
    }
    if (first)
        dispatch_async_f(dispatch_get_main_queue(), nullptr, updateChangedWindows);
}

} // namespace vant

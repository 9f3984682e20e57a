#import "GNUstep/tracking/Tracking.h"

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

bool overridesUpdate(NSView *view) {
    SEL name = @selector(updateTrackingAreas);
    return [view methodForSelector:name] != [NSView instanceMethodForSelector:name];
}

/// Set while this thread asks for a place. GNUstep may work it out for that, and tells so: no news to who asks, and to
/// take it for a change would call for the next update from within each.
thread_local bool asking = false;

TrackedPlace currentPlace(NSView *view) {
    asking = true;
    const TrackedPlace place = {
        .window = [view window],
        .bounds = [view bounds],
        .boundsInWindow = [view convertRect:[view bounds] toView:nil],
        .visible = [view visibleRect],
    };
    asking = false;
    return place;
}

void updateViews(NSView *view) {
    if (overridesUpdate(view) && recordPlace(view, currentPlace(view)))
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

void scheduleTrackingUpdate(NSWindow *window) {
    if (window == nil || asking)
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

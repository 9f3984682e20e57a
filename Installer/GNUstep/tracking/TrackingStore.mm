#import "GNUstep/tracking/Tracking.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace vant {
namespace {

struct Store {
    std::mutex mutex;
    std::vector<TrackedArea> areas;
    std::map<NSView *, TrackedPlace> places;
};

Store &store() {
    // Never destroyed: views may be freed while the process ends.
    static auto *const instance = new Store;
    return *instance;
}

} // namespace

void addTrackedArea(const TrackedArea &tracked) {
    [tracked.area retain];
    const std::scoped_lock lock(store().mutex);
    store().areas.push_back(tracked);
}

bool removeTrackedArea(NSView *view, NSTrackingArea *area) {
    {
        const std::scoped_lock lock(store().mutex);
        auto &areas = store().areas;
        const auto found = std::ranges::find_if(
            areas, [&](const TrackedArea &each) { return each.view == view && each.area == area; });
        if (found == areas.end())
            return false;
        areas.erase(found);
    }
    [area release];
    return true;
}

void setInside(NSView *view, NSTrackingArea *area, bool inside) {
    const std::scoped_lock lock(store().mutex);
    for (TrackedArea &each : store().areas)
        if (each.view == view && each.area == area)
            each.inside = inside;
}

std::vector<TrackedArea> trackedAreas(NSView *view) {
    const std::scoped_lock lock(store().mutex);
    std::vector<TrackedArea> copies;
    for (const TrackedArea &each : store().areas) {
        if (view != nil && each.view != view)
            continue;
        [[each.view retain] autorelease];
        [[each.area retain] autorelease];
        copies.push_back(each);
    }
    return copies;
}

NSTrackingArea *areaAt(NSInteger address) {
    const std::scoped_lock lock(store().mutex);
    for (const TrackedArea &each : store().areas)
        if (reinterpret_cast<NSInteger>(each.area) == address)
            return [[each.area retain] autorelease];
    return nil;
}

bool recordPlace(NSView *view, const TrackedPlace &place) {
    const std::scoped_lock lock(store().mutex);
    TrackedPlace &noted = store().places[view];
    const bool same = noted.window == place.window && NSEqualRects(noted.bounds, place.bounds) &&
                      NSEqualRects(noted.boundsInWindow, place.boundsInWindow) &&
                      NSEqualRects(noted.visible, place.visible);
    noted = place;
    return !same;
}

void forgetView(NSView *view) {
    std::vector<NSTrackingArea *> released;
    {
        const std::scoped_lock lock(store().mutex);
        store().places.erase(view);
        std::erase_if(store().areas, [&](const TrackedArea &each) {
            if (each.view != view)
                return false;
            released.push_back(each.area);
            return true;
        });
    }
    for (NSTrackingArea *area : released)
        [area release];
}

} // namespace vant

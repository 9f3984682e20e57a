#pragma once
#import <Foundation/Foundation.h>

#include "Timeline.hpp"
#include <map>
#include <optional>
#include <string>

/// Hears how the package installers end that the pane has launched: the layer under the pane tells it where the
/// platform's own call does not. Where nothing tells it, nothing is known. Main thread.
@interface ToolWatch : NSObject {
    vant::host::Timeline *timeline;
    std::map<std::string, int> statuses;
    NSUInteger ended;
}

/// The timeline is not owned and must outlive the watch.
- (id)initWithTimeline:(vant::host::Timeline *)runTimeline;

/// How many have ended.
- (NSUInteger)ended;

/// The exit status of the installer of the package at the path, 128 and more for a signal; absent while it is not
/// known.
- (std::optional<int>)statusOfPackage:(const std::string &)path;

@end

#pragma once
#import <Foundation/Foundation.h>

#include "Summary.hpp"
#include "Timeline.hpp"
#include <map>
#include <string>

/// Reads a pane from outside, by the names of its fields, and puts what changes on the timeline. Main thread.
@interface PaneWatch : NSObject {
    id pane;
    vant::host::Timeline *timeline;
    std::map<std::string, std::string> seen;
}

/// Neither the pane nor the timeline is owned; both must outlive the watch.
- (id)initWithPane:(id)watchedPane timeline:(vant::host::Timeline *)runTimeline;

/// Records the status text, the bars and the slide's title where they have changed since the last look.
- (void)look;

/// The status text now.
- (NSString *)status;

/// The packages of the run's list, in its order, with the outcomes recorded so far.
- (std::vector<vant::host::Package>)packages;

/// The code of the last failed download, 0 when none has failed.
- (int)downloadError;

@end

#pragma once
#import <Foundation/Foundation.h>

#include "RunMarks.hpp"
#include "Timeline.hpp"
#include <mutex>
#include <vector>

/// Puts every notification of the installation on the timeline, on the thread that posts it, and marks the moments at
/// which a package has ended.
@interface EventRecorder : NSObject {
    vant::host::Timeline *timeline;
    BOOL packageFailed;
    std::mutex mutex;
    std::vector<vant::host::Mark> marks;
}

/// The timeline is not owned and must outlive the recorder.
- (id)initWithTimeline:(vant::host::Timeline *)runTimeline;

/// Listens, from now on before everybody who listens already: the observer that came last is told first.
- (void)listen;

/// YES once a list of packages ended with a failed one.
- (BOOL)packageFailed;

/// The start, and the end of each package so far. Any thread.
- (std::vector<vant::host::Mark>)marks;

/// How many packages have ended so far. Any thread.
- (NSUInteger)packagesEnded;

@end

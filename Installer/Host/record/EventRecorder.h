#pragma once
#import <Foundation/Foundation.h>

#include "Timeline.hpp"

/// Puts every notification of the installation on the timeline, on the thread that posts it. To be made before the
/// pane, so that a notification stands before what its handlers do.
@interface EventRecorder : NSObject {
    vant::host::Timeline *timeline;
    BOOL packageFailed;
}

/// The timeline is not owned and must outlive the recorder.
- (id)initWithTimeline:(vant::host::Timeline *)runTimeline;

/// YES once a list of packages ended with a failed one.
- (BOOL)packageFailed;

@end

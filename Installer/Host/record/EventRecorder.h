#pragma once
#import <Foundation/Foundation.h>

#include "Timeline.hpp"

/// Puts every notification of the installation on the timeline, on the thread that posts it.
@interface EventRecorder : NSObject {
    vant::host::Timeline *timeline;
    BOOL packageFailed;
}

/// The timeline is not owned and must outlive the recorder.
- (id)initWithTimeline:(vant::host::Timeline *)runTimeline;

/// Listens, from now on before everybody who listens already: the observer that came last is told first.
- (void)listen;

/// YES once a list of packages ended with a failed one.
- (BOOL)packageFailed;

@end

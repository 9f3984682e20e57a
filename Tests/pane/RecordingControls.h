#pragma once
#import <AppKit/AppKit.h>

/// A progress indicator that writes down when it is started and stopped.
@interface VantRecordingBar : NSProgressIndicator {
    NSMutableArray *calls;
}
/// "start" and "stop", in order.
- (NSArray *)calls;
@end

/// A text field that knows every text that it was given.
@interface VantRecordingField : NSTextField {
    NSMutableArray *texts;
}
- (NSArray *)texts;
@end

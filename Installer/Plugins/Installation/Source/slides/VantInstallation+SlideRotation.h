#import "shell/VantInstallation.h"

/// Which information page is up. Thread: main.
@interface VantInstallation (SlideRotation)
/// The slide timer's action: turns to the other page.
- (void)changeImageTrigger;
/// Action of the page indicator (tag 0), Back (tag 1) and Next (tag 2); nil comes from the timer. A control's message
/// stops the timer for good.
- (IBAction)changeImage:(id)sender;
@end

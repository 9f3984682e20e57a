#import "EventRecorder.h"

static NSString *const packageFailedNotification = @"FindInstallFile3";

/// The names that the pane's steps are joined by.
static NSArray *installationNotifications(void) {
    return @[
        @"webDownloadStartNotification", @"downloadinfoo", @"downloadcompleted", @"unzipcompleted",
        @"InstallNextSUComponent", @"SUInstallComplete", @"InstallNextCDComponent", @"CDInstallComplete",
        packageFailedNotification, @"FindInstallFile"
    ];
}

/// What the notification is about: the last part of the first path that it carries.
static NSString *subject(NSNotification *notification) {
    NSArray *carriers = @[
        [notification object] != nil ? [notification object] : @"",
        [notification userInfo] != nil ? [notification userInfo] : @""
    ];
    for (id carrier in carriers) {
        if (![carrier isKindOfClass:[NSDictionary class]])
            continue;
        for (NSString *key in @[ @"LOCATION", @"installerpath", @"Path", @"path" ]) {
            id path = [carrier objectForKey:key];
            if ([path isKindOfClass:[NSString class]])
                return [path lastPathComponent];
        }
    }
    return @"";
}

@implementation EventRecorder

- (id)initWithTimeline:(vant::host::Timeline *)runTimeline {
    self = [super init];
    if (self == nil)
        return nil;
    timeline = runTimeline;
    [self listen];
    return self;
}

- (void)listen {
    NSNotificationCenter *centre = [NSNotificationCenter defaultCenter];
    [centre removeObserver:self];
    for (NSString *name in installationNotifications())
        [centre addObserver:self selector:@selector(note:) name:name object:nil];
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)note:(NSNotification *)notification {
    NSString *name = [notification name];
    NSString *text = [NSString stringWithFormat:@"%@ %@", name, subject(notification)];
    timeline->record("notification",
                     [[text stringByTrimmingCharactersInSet:[NSCharacterSet whitespaceCharacterSet]] UTF8String]);
    if ([name isEqualToString:packageFailedNotification])
        packageFailed = YES;
}

- (BOOL)packageFailed {
    return packageFailed;
}

@end

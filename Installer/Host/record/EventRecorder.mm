#import "EventRecorder.h"

#include <unistd.h>

static NSString *const packageFailedNotification = @"FindInstallFile3";

/// The names that the pane's steps are joined by.
static NSArray *installationNotifications(void) {
    return @[
        @"webDownloadStartNotification", @"downloadinfoo", @"downloadcompleted", @"unzipcompleted",
        @"InstallNextSUComponent", @"SUInstallComplete", @"InstallNextCDComponent", @"CDInstallComplete",
        packageFailedNotification, @"FindInstallFile"
    ];
}

/// The names that a package's end is announced by, whatever follows it.
static BOOL endsPackage(NSString *name) {
    return [@[
        @"InstallNextSUComponent", @"SUInstallComplete", @"InstallNextCDComponent", @"CDInstallComplete",
        packageFailedNotification
    ] containsObject:name];
}

/// The first path in a record or in user information, nil when there is none.
static NSString *pathIn(id carrier) {
    if (![carrier isKindOfClass:[NSDictionary class]])
        return nil;
    for (NSString *key in @[ @"LOCATION", @"installerpath", @"Path", @"path" ])
        if ([[carrier objectForKey:key] isKindOfClass:[NSString class]])
            return [carrier objectForKey:key];
    return nil;
}

/// What the notification is about: the last part of the first path that it carries.
static NSString *subject(NSNotification *notification) {
    NSString *path = pathIn([notification object]);
    if (path == nil)
        path = pathIn([notification userInfo]);
    return path == nil ? @"" : [path lastPathComponent];
}

@implementation EventRecorder

- (id)initWithTimeline:(vant::host::Timeline *)runTimeline {
    self = [super init];
    if (self == nil)
        return nil;
    timeline = runTimeline;
    marks = {vant::host::markNow(STDERR_FILENO)};
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
    if (endsPackage(name))
        [self markEnd];
    if ([name isEqualToString:packageFailedNotification])
        packageFailed = YES;
}

- (void)markEnd {
    const std::lock_guard lock(mutex);
    marks.push_back(vant::host::markNow(STDERR_FILENO));
}

- (std::vector<vant::host::Mark>)marks {
    const std::lock_guard lock(mutex);
    return marks;
}

- (NSUInteger)packagesEnded {
    const std::lock_guard lock(mutex);
    return marks.size() - 1;
}

- (BOOL)packageFailed {
    return packageFailed;
}

@end

#import "ToolWatch.h"

static NSString *const toolDidExit = @"VantPrivilegedToolDidExitNotification";
static NSString *const argumentsKey = @"VantPrivilegedToolArguments";
static NSString *const exitStatusKey = @"VantPrivilegedToolExitStatus";
static NSString *const signalKey = @"VantPrivilegedToolSignal";
static const int signalBase = 128;

/// The package that an installer was told to install, nil when it was told something else.
static NSString *packageIn(NSArray *arguments) {
    const NSUInteger option = [arguments indexOfObject:@"-pkg"];
    const bool named = option != NSNotFound && option + 1 < [arguments count];
    return named ? [arguments objectAtIndex:option + 1] : nil;
}

/// As shells tell it. A tool whose end is not known has none.
static std::optional<int> statusIn(NSDictionary *information) {
    if (NSNumber *status = [information objectForKey:exitStatusKey])
        return [status intValue];
    if (NSNumber *number = [information objectForKey:signalKey])
        return signalBase + [number intValue];
    return std::nullopt;
}

@implementation ToolWatch

- (id)initWithTimeline:(vant::host::Timeline *)runTimeline {
    self = [super init];
    if (self == nil)
        return nil;
    timeline = runTimeline;
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(toolDidExit:)
                                                 name:toolDidExit
                                               object:nil];
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)toolDidExit:(NSNotification *)notification {
    NSDictionary *information = [notification userInfo];
    NSString *package = packageIn([information objectForKey:argumentsKey]);
    if (package == nil)
        return;
    ++ended;
    const auto status = statusIn(information);
    if (status)
        statuses[[package UTF8String]] = *status;
    const std::string words = status ? "exit status " + std::to_string(*status) : "exit status unknown";
    timeline->record("installer", words + " " + [[package lastPathComponent] UTF8String]);
}

- (NSUInteger)ended {
    return ended;
}

- (std::optional<int>)statusOfPackage:(const std::string &)path {
    const auto found = statuses.find(path);
    return found != statuses.end() ? std::optional(found->second) : std::nullopt;
}

@end

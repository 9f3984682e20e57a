#import "HostController.h"

#import "SelectionFiles.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <poll.h>
#include <unistd.h>

static NSString *const vendorName = @"Quorvel";
static const NSTimeInterval lookInterval = 0.02;

/// True once the other end of standard input has been closed, or at once when nothing is there to be read.
static bool standardInputEnded(void) {
    pollfd input = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    char byte = 0;
    return poll(&input, 1, 0) > 0 && read(STDIN_FILENO, &byte, 1) <= 0;
}

@implementation HostController

- (id)initWithSettings:(const HostSettings &)runSettings {
    self = [super init];
    if (self == nil)
        return nil;
    settings = runSettings;
    NSString *file = [settings.output stringByAppendingPathComponent:@"timeline.txt"];
    timeline = std::make_unique<vant::host::Timeline>(file != nil ? [file UTF8String] : "");
    return self;
}

- (void)dealloc {
    [watch release];
    [pane release];
    [recorder release];
    [observer release];
    [window release];
    [endTime release];
    [super dealloc];
}

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
    (void)notification;
    timeline->record("host", std::string("flow ") + [settings.flow UTF8String] + ", language " +
                                 [settings.language UTF8String]);
    window = [[WizardWindow alloc] initWithTarget:self];
    observer = [[HostObserver alloc] initWithWindow:window timeline:timeline.get()];
    recorder = [[EventRecorder alloc] initWithTimeline:timeline.get()];
    VantWriteSelectionFiles(settings);
    [window showPage:nil
               title:[[NSBundle mainBundle] localizedStringForKey:@"WebInstallTitle"
                                                            value:@""
                                                            table:@"Localizable-Inst"]];
    // From the run loop, so that the window is on the screen before the administrator prompt blocks this thread.
    [self performSelector:@selector(startPage) withObject:nil afterDelay:0.1];
}

- (void)startPage {
    NSBundle *bundle = [NSBundle bundleWithPath:settings.bundle];
    const Class principalClass = [bundle principalClass];
    if (principalClass == Nil)
        return [self failToStart:@"the plug-in cannot be loaded"];
    @try {
        pane = [[principalClass alloc] initWithModel:@{@"Model Observer" : observer, @"VendorName" : vendorName}];
    } @catch (NSException *exception) {
        return [self failToStart:[exception reason]];
    }
    [recorder listen];
    if (pane == nil)
        return [self failToStart:@"the plug-in made no pane"];
    timeline->record("host", "pane created");
    watch = [[PaneWatch alloc] initWithPane:pane timeline:timeline.get()];
    [window showPage:[pane contentView] title:[pane windowTitle]];
    timeline->record("host", std::string("pane shown, valid ") + [[pane isPluginValid] UTF8String]);
    NSTimer *timer = [NSTimer timerWithTimeInterval:lookInterval
                                             target:self
                                           selector:@selector(look)
                                           userInfo:nil
                                            repeats:YES];
    for (NSString *mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ])
        [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
    if (settings.nextSlide > 0)
        [[pane valueForKey:@"nextButton"] performSelector:@selector(performClick:)
                                               withObject:self
                                               afterDelay:settings.nextSlide];
}

- (void)failToStart:(NSString *)why {
    NSString *reason = [NSString stringWithFormat:@"%@: %@", why, settings.bundle];
    [self endWith:{false, [reason UTF8String]}];
    [self leave];
}

- (void)look {
    [watch look];
    if (endTime != nil)
        return [self leaveInTime];
    const auto reached = vant::host::ending([self signs]);
    if (reached)
        [self endWith:*reached];
}

- (vant::host::Signs)signs {
    vant::host::Signs signs = {
        .refused = [[pane isPluginValid] isEqualToString:@"NO"] != NO,
        .continued = [observer continued] != NO,
        .packageFailed = [recorder packageFailed] != NO,
        .cancelled = cancelled != NO,
        .secondsSinceButton2 = std::nullopt,
        .seconds = timeline->seconds(),
        .timeOut = settings.timeOut,
    };
    if ([observer button2Enabled] != nil)
        signs.secondsSinceButton2 = -[[observer button2Enabled] timeIntervalSinceNow];
    return signs;
}

- (void)endWith:(const vant::host::Ending &)reached {
    end = reached;
    if (const int error = [watch downloadError]; !end.continued && error != 0)
        end.reason += "; last download error " + std::to_string(error);
    endTime = [[NSDate date] retain];
    timeline->record("host", "end: " + end.reason);
    [self writeSummary];
}

- (void)writeSummary {
    NSString *desktop = [NSHomeDirectory() stringByAppendingPathComponent:@"Desktop/QuorvelPrinter"];
    const vant::host::Summary summary = {
        .flow = [settings.flow UTF8String],
        .language = [settings.language UTF8String],
        .continued = end.continued,
        .valid = pane != nil ? [[pane isPluginValid] UTF8String] : "NO",
        .status = watch != nil ? [[watch status] UTF8String] : "",
        .reason = end.reason,
        .packages = watch != nil ? [watch packages] : std::vector<vant::host::Package>(),
        .setAside = vant::host::folderNames([desktop UTF8String]),
        .installedFiles = settings.installRoot != nil ? vant::host::fileCount([settings.installRoot UTF8String]) : 0,
        .seconds = timeline->seconds(),
    };
    NSString *file = [settings.output stringByAppendingPathComponent:@"summary.json"];
    if (file == nil)
        return;
    // Whoever waits for the file finds it whole: it is written beside its place and moved there.
    const std::string path = [file UTF8String];
    std::ofstream(path + ".part") << json(summary);
    std::rename((path + ".part").c_str(), path.c_str());
}

- (void)leaveInTime {
    if (standardInputEnded() || -[endTime timeIntervalSinceNow] >= settings.linger)
        [self leave];
}

- (void)leave {
    if (!end.continued)
        std::fprintf(stderr, "VantHost: %s\n", end.reason.c_str());
    // At once: installer threads may still be at work, and must not see this process's objects go.
    std::_Exit(end.continued ? EXIT_SUCCESS : EXIT_FAILURE);
}

- (void)wizardButtonPressed:(NSInteger)number {
    NSString *answer = number == 1   ? [pane performButton1Action]
                       : number == 2 ? [pane performButton2Action]
                                     : [pane performButton3Action];
    NSString *text = [NSString stringWithFormat:@"performButton%ldAction answered %@", (long)number, answer];
    timeline->record("host", [text UTF8String]);
    cancelled = cancelled || number == 3;
}

- (void)wizardWindowClosed {
    cancelled = YES;
}

@end

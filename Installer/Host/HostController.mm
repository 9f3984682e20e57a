#import "HostController.h"

#import "DownloadFolder.h"
#import "HostText.h"
#import "OwnFolder.h"
#import "RunReport.h"
#import "SelectionFiles.h"
#import "StopQuestion.h"
#import "WindowSystem.h"

#include <cstdio>
#include <cstdlib>

static NSString *const vendorName = @"Quorvel";
static const NSTimeInterval lookInterval = 0.02;
static const NSTimeInterval toolPatience = 1;

static NSString *textOfNotice(const vant::host::Notice &notice) {
    return VantNoticeTextWithCode([NSString stringWithUTF8String:notice.key.c_str()], notice.code);
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
    [tools release];
    [recorder release];
    [observer release];
    [window release];
    [reachedTime release];
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
    tools = [[ToolWatch alloc] initWithTimeline:timeline.get()];
    [window showPage:nil
               title:[[NSBundle mainBundle] localizedStringForKey:@"WebInstallTitle"
                                                            value:@""
                                                            table:@"Localizable-Inst"]];
    [self startLooking];
    // From the run loop, so that the window is on the screen before the administrator prompt blocks this thread.
    [self performSelector:@selector(startPage) withObject:nil afterDelay:0.1];
}

/// Looks at the pane now and then, also while a panel is open.
- (void)startLooking {
    NSTimer *timer = [NSTimer timerWithTimeInterval:lookInterval
                                             target:self
                                           selector:@selector(look)
                                           userInfo:nil
                                            repeats:YES];
    for (NSString *mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ])
        [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
}

- (void)startPage {
    if (NSString *refused = VantWriteSelectionFiles(settings))
        return [self failToStart:refused];
    NSBundle *bundle = [NSBundle bundleWithPath:settings.bundle];
    const Class principalClass = [bundle principalClass];
    if (principalClass == Nil)
        return [self failToStart:[@"the plug-in cannot be loaded: " stringByAppendingString:settings.bundle]];
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
}

- (void)failToStart:(NSString *)why {
    [self endWith:{vant::host::EndingKind::NotStarted, [why UTF8String]}];
}

- (void)look {
    [watch look];
    if (settings.obeys)
        [self obey];
    if (endTime != nil)
        return [self leaveInTime];
    const vant::host::Signs signs = [self signs];
    const NSUInteger packages = [watch packageCount];
    [window showPackage:vant::host::packageAtWork([watch hasStarted], [recorder packagesEnded], packages) of:packages];
    const auto reached = vant::host::ending(signs);
    if (!reached)
        [self say:vant::host::noticeOf(signs)];
    else if (![self waitsForTools])
        [self endWith:*reached];
}

/// What was to be drawn is told of a look after it was asked for: by then the run loop has handled what was under way.
- (void)obey {
    [watch lookAtRows];
    if (wantsDrawn) {
        VantDrawWindows();
        timeline->record("host", "drawn");
    }
    wantsDrawn = NO;
    for (const std::string &order : orders.take()) {
        wantsDrawn = wantsDrawn || order == "draw";
        if (order == "next page")
            [[pane valueForKey:@"nextButton"] performClick:self];
    }
}

/// The output of a package's installer ends before the installer does, and the last one's end is wanted in the summary.
- (BOOL)waitsForTools {
    if (reachedTime == nil)
        reachedTime = [[NSDate date] retain];
    return [tools ended] < [recorder packagesEnded] && -[reachedTime timeIntervalSinceNow] < toolPatience;
}

- (vant::host::Signs)signs {
    vant::host::Signs signs = {
        .refused = [[pane isPluginValid] isEqualToString:@"NO"] != NO,
        .continued = [observer continued] != NO,
        .packageFailed = [recorder packageFailed] != NO,
        .cancelled = cancelled != NO,
        .installing = [watch isInstalling] != NO,
        .launchError = [watch launchError],
        .downloadError = [watch downloadError],
        .secondsSinceButton2 = std::nullopt,
        .secondsStill = [watch secondsStill],
        .stillAfter = settings.stillAfter,
        .seconds = timeline->seconds(),
        .timeOut = settings.timeOut,
    };
    if ([observer button2Enabled] != nil)
        signs.secondsSinceButton2 = -[[observer button2Enabled] timeIntervalSinceNow];
    return signs;
}

- (void)say:(const std::optional<vant::host::Notice> &)notice {
    if (notice == shown)
        return;
    shown = notice;
    NSString *text = notice ? textOfNotice(*notice) : nil;
    timeline->record("notice", text != nil ? [text UTF8String] : "");
    [window showNotice:text];
}

- (void)endWith:(const vant::host::Ending &)reached {
    end = reached;
    endTime = [[NSDate date] retain];
    VantWithdrawQuestion();
    [window showPackage:0 of:0];
    [self say:vant::host::noticeOf(end)];
    timeline->record("host", "end: " + end.reason);
    exitStatus = VantWriteReport(settings, end, {watch, recorder, tools}, timeline->seconds());
    if (cancelled)
        [self leave];
}

- (void)leaveInTime {
    if (orders.ended() || -[endTime timeIntervalSinceNow] >= settings.linger)
        [self leave];
}

- (void)leave {
    if (!end.continued())
        std::fprintf(stderr, "VantHost: %s\n", end.reason.c_str());
    // Nobody needs them again, unless something went wrong and is to be looked at.
    if (exitStatus == 0)
        VantRemoveDownloads();
    VantLeaveOwnFolder();
    // At once: installer threads may still be at work, and must not see this process's objects go.
    std::_Exit(exitStatus);
}

- (void)wizardButtonPressed:(NSInteger)number {
    if (endTime != nil)
        [self leave];
    NSString *answer = number == 1   ? [pane performButton1Action]
                       : number == 2 ? [pane performButton2Action]
                                     : [pane performButton3Action];
    NSString *text = [NSString stringWithFormat:@"performButton%ldAction answered %@", (long)number, answer];
    timeline->record("host", [text UTF8String]);
    cancelled = cancelled || number == 3;
}

/// The way out that is the host's own: some failures leave the page where it is, with every button taken away.
- (BOOL)wizardWindowShouldClose {
    if (endTime != nil)
        [self leave];
    cancelled = cancelled || VantAskWhetherToStop();
    return NO;
}

@end

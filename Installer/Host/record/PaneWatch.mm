#import "PaneWatch.h"

#import "RowCount.h"
#import "shell/VantInstallation.h"

#include <objc/runtime.h>
#include <utility>

/// The pane's status after a package whose installer's output has ended.
static const int outputEnded = -1278;

static std::string text(id value) {
    const char *bytes = [value isKindOfClass:[NSString class]] ? [value UTF8String] : nullptr;
    return bytes != nullptr ? bytes : "";
}

/// The watch of this process's one pane, told by the pane's own controls.
static PaneWatch *watching = nil;

@interface PaneWatch (Told)
- (void)note:(const char *)kind name:(const std::string &)name value:(const std::string &)value;
- (void)noteBar:(NSProgressIndicator *)bar;
@end

/// A status line that tells each of its texts on the thread that sets it. Adds no field, so that a text field can
/// become one while it is in use.
@interface WatchedStatusLine : NSTextField
@end

@implementation WatchedStatusLine

- (void)setStringValue:(NSString *)value {
    [super setStringValue:value];
    [watching note:"status" name:"" value:text(value)];
}

@end

/// A bar that tells each of its values, and whether it is shown.
@interface WatchedBar : NSProgressIndicator
@end

@implementation WatchedBar

- (void)setDoubleValue:(double)value {
    [super setDoubleValue:value];
    [watching noteBar:self];
}

- (void)setHidden:(BOOL)hidden {
    [super setHidden:hidden];
    [watching noteBar:self];
}

@end

/// Only an object of exactly the watched class's parent can become one; any other is left as it is.
static void becomeWatched(id control, Class watched) {
    if ([control isMemberOfClass:[watched superclass]])
        object_setClass(control, watched);
}

@implementation PaneWatch

- (id)initWithPane:(id)watchedPane timeline:(vant::host::Timeline *)runTimeline {
    self = [super init];
    if (self == nil)
        return nil;
    pane = watchedPane;
    timeline = runTimeline;
    lastChange = runTimeline->seconds();
    bars = {{"download", [pane valueForKey:@"mVTPackageDownloadProg"]},
            {"install", [pane valueForKey:@"mVTPackageInstallationProg"]}};
    watching = self;
    becomeWatched([pane valueForKey:@"mProgressInfoTF"], [WatchedStatusLine class]);
    for (const auto &[name, bar] : bars)
        becomeWatched(bar, [WatchedBar class]);
    return self;
}

- (void)dealloc {
    watching = nil;
    [super dealloc];
}

- (void)note:(const char *)kind name:(const std::string &)name value:(const std::string &)value {
    {
        const std::lock_guard lock(mutex);
        if (std::exchange(seen[kind + name], value) == value)
            return;
    }
    lastChange = timeline->seconds();
    timeline->record(kind, name.empty() ? value : name + " " + value);
}

- (void)noteBar:(NSProgressIndicator *)bar {
    for (const auto &[name, known] : bars) {
        if (known != bar)
            continue;
        NSString *value = [NSString stringWithFormat:@"%.2f", [bar doubleValue]];
        [self note:"bar" name:name + " is" value:[bar isHidden] ? "hidden" : "shown"];
        [self note:"bar" name:name value:[value UTF8String]];
    }
}

- (void)look {
    [self note:"status" name:"" value:[[self status] UTF8String]];
    for (const auto &[name, bar] : bars)
        [self noteBar:bar];
    [self note:"slide" name:"" value:text([[pane valueForKey:@"productTitle"] stringValue])];
}

- (void)lookAtRows {
    [self note:"rows" name:"" value:VantRowCount(pane)];
}

- (NSString *)isValid {
    return [pane isPluginValid];
}

- (NSString *)status {
    NSString *status = [[pane valueForKey:@"mProgressInfoTF"] stringValue];
    return status != nil ? status : @"";
}

/// A run works through one of two lists: the web flow fills the first, the media flow the second.
- (NSArray *)packagesOfWeb {
    return [pane valueForKey:@"mInstallCompArrayForSmartUpdate"];
}

- (NSArray *)packageRecords {
    NSArray *list = [self packagesOfWeb];
    return [list count] > 0 ? list : [pane valueForKey:@"mInstallCompArrayForCDUpdate"];
}

- (NSUInteger)packageCount {
    return [[self packageRecords] count];
}

- (std::vector<vant::host::Package>)packages {
    NSArray *list = [self packageRecords];
    const bool web = list == [self packagesOfWeb];
    NSDictionary *outcomes = [pane valueForKey:@"mInstalledPackageDict"];
    std::vector<vant::host::Package> packages;
    for (NSDictionary *record in list) {
        const std::string path = text([record objectForKey:web ? @"installerpath" : @"LOCATION"]);
        const std::string component = text([record objectForKey:web ? @"componentname" : @"TYPE"]);
        const std::string name = path.substr(path.rfind('/') + 1);
        NSString *outcome = [outcomes objectForKey:[NSString stringWithUTF8String:name.c_str()]];
        packages.push_back({name, component, path, outcome != nil ? std::optional(text(outcome)) : std::nullopt});
    }
    return packages;
}

- (int)launchError {
    const int status = [[pane valueForKey:@"status"] intValue];
    return status == outputEnded ? 0 : status;
}

- (NSProgressIndicator *)installationBar {
    return bars.at("install");
}

- (BOOL)isInstalling {
    return [self packageCount] > 0 && ![[self installationBar] isHidden];
}

- (BOOL)hasStarted {
    return [self isInstalling] && [[self installationBar] doubleValue] > 0;
}

- (double)secondsStill {
    return timeline->seconds() - lastChange;
}

- (int)downloadError {
    return [[pane valueForKey:@"errcodeStr"] intValue];
}

@end

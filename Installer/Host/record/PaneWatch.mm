#import "PaneWatch.h"

#import <AppKit/AppKit.h>
#include <utility>

static std::string text(id value) {
    const char *bytes = [value isKindOfClass:[NSString class]] ? [value UTF8String] : nullptr;
    return bytes != nullptr ? bytes : "";
}

@implementation PaneWatch

- (id)initWithPane:(id)watchedPane timeline:(vant::host::Timeline *)runTimeline {
    self = [super init];
    if (self == nil)
        return nil;
    pane = watchedPane;
    timeline = runTimeline;
    return self;
}

- (void)note:(const char *)kind name:(const std::string &)name value:(const std::string &)value {
    std::string &last = seen[kind + name];
    if (std::exchange(last, value) != value)
        timeline->record(kind, name.empty() ? value : name + " " + value);
}

- (void)lookAtBar:(NSString *)field name:(const std::string &)name {
    NSProgressIndicator *bar = [pane valueForKey:field];
    if (bar == nil)
        return;
    NSString *value = [NSString stringWithFormat:@"%.2f", [bar doubleValue]];
    [self note:"bar" name:name + " is" value:[bar isHidden] ? "hidden" : "shown"];
    [self note:"bar" name:name value:[value UTF8String]];
}

- (void)look {
    [self note:"status" name:"" value:[[self status] UTF8String]];
    [self lookAtBar:@"mVTPackageDownloadProg" name:"download"];
    [self lookAtBar:@"mVTPackageInstallationProg" name:"install"];
    [self note:"slide" name:"" value:text([[pane valueForKey:@"productTitle"] stringValue])];
}

- (NSString *)status {
    NSString *status = [[pane valueForKey:@"mProgressInfoTF"] stringValue];
    return status != nil ? status : @"";
}

/// A run works through one of two lists: the web flow fills the first, the media flow the second.
- (std::vector<vant::host::Package>)packages {
    NSArray *list = [pane valueForKey:@"mInstallCompArrayForSmartUpdate"];
    const bool web = [list count] > 0;
    if (!web)
        list = [pane valueForKey:@"mInstallCompArrayForCDUpdate"];
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

- (int)downloadError {
    return [[pane valueForKey:@"errcodeStr"] intValue];
}

@end

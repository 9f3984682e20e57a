#import "ui/VantComponentTable+Installation.h"

#import "base/Bridge.h"
#import "base/MainQueue.h"
#import "base/Paths.hpp"
#import "base/PropertyList.h"
#import "base/Retained.h"
#import "download/BDObject.h"
#include "install/tasks/Archives.hpp"
#import "selection/ComponentRecord.h"
#import "selection/SelectionEntry.h"
#import "shell/Notifications.h"
#import "shell/VantInstallation.h"

@interface VantComponentTable (Rows)
- (NSArray *)rows;
- (NSArray *)entries;
- (void)stopSpinnersOfInstalledRows;
@end

/// Name of the folder that the archive at an address expands into.
static std::string folderOfAddress(NSString *address) {
    const std::string text = vant::utf8(address);
    return std::string(vant::extractFolderName(vant::destinationName(text)));
}

@implementation VantComponentTable (Installation)

- (void)watchInstallation {
    NSNotificationCenter *centre = [NSNotificationCenter defaultCenter];
    for (NSString *name in @[ VantInstallNextCDComponentNotification, VantCDInstallCompleteNotification ])
        [centre addObserver:self selector:@selector(mediaPackageEnded:) name:name object:nil];
    [centre addObserver:self selector:@selector(archiveExpanded:) name:VantUnzipCompletedNotification object:nil];
    [centre addObserver:self selector:@selector(webFlowEnded:) name:VantSUInstallCompleteNotification object:nil];
}

// On the installer thread that posts, where the list stands still; the rows change on the main one.
- (void)mediaPackageEnded:(NSNotification *)notification {
    NSArray *records = [pane valueForKey:@"mInstallCompArrayForCDUpdate"];
    const NSUInteger ended = [notification object] != nil ? static_cast<NSUInteger>(cdInstallIndex) : [records count];
    NSMutableSet *locations = [NSMutableSet set];
    for (NSUInteger index = 0; index < ended && index < [records count]; ++index)
        if (NSString *location = VantStringForKey([records objectAtIndex:index], VantLocationKey))
            [locations addObject:location];
    [self hop:@selector(markInstalled:) with:locations];
}

- (void)archiveExpanded:(NSNotification *)notification {
    [self hop:@selector(fillBarOfFolder:) with:VantStringForKey([notification userInfo], VantExpandedPathKey)];
}

- (void)webFlowEnded:(NSNotification *)notification {
    (void)notification;
    [self hop:@selector(markAllInstalled:) with:nil];
}

- (void)hop:(SEL)operation with:(id)argument {
    auto table_ = vant::Retained<VantComponentTable>::retain(self);
    auto owned = vant::Retained<NSObject>::retain(argument);
    vant::onMainQueue([table_, owned, operation] { [table_.get() performSelector:operation withObject:owned.get()]; });
}

- (NSString *)locationOfRow:(NSUInteger)index {
    NSArray *entries = [self entries];
    return index < [entries count] ? VantEntryText([entries objectAtIndex:index], VantLocationKey) : nil;
}

- (void)markInstalled:(NSSet *)locations {
    for (NSUInteger index = 0; index < [[self rows] count]; ++index)
        if ([locations containsObject:[self locationOfRow:index]])
            [self markRow:index];
    [self stopSpinnersOfInstalledRows];
}

- (void)markAllInstalled:(id)ignored {
    (void)ignored;
    for (NSUInteger index = 0; index < [[self rows] count]; ++index)
        [self markRow:index];
    [self stopSpinnersOfInstalledRows];
}

- (void)markRow:(NSUInteger)index {
    [installed addIndex:index];
    [self fillBarOfRow:index];
}

- (void)fillBarOfRow:(NSUInteger)index {
    NSProgressIndicator *bar = [[[self rows] objectAtIndex:index] discreteProgress];
    [bar setDoubleValue:[bar maxValue]];
}

- (void)fillBarOfFolder:(NSString *)folder {
    const std::string name = vant::utf8([folder lastPathComponent]);
    for (NSUInteger index = 0; index < [[self rows] count]; ++index)
        if (folder != nil && folderOfAddress([self locationOfRow:index]) == name)
            [self fillBarOfRow:index];
}

@end

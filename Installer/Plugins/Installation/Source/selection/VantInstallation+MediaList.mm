#import "selection/VantInstallation+MediaList.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#import "selection/ComponentRecord.h"
#include "selection/MediaList.hpp"
#import "selection/SelectionEntry.h"
#import "selection/VantInstallation+PackageLists.h"
#import "shell/VantInstallation+HostLink.h"
#import "shell/VantInstallation+UserSettings.h"

@implementation VantInstallation (MediaList)

- (void)resetBookkeeping {
    vant::renew(unzipcountArr);
    vant::renew(downloadcompletedcountArr);
    vant::renew(myDownloadinfoArray);
    vant::hold(objIndexArray, [NSArray array]);
    vant::renew(scancounts);
}

- (void)setCurrentLocation:(NSString *)location {
    vant::hold(locationstr, [[location copy] autorelease]);
}

// A component without a location is still installed; there is just nothing to record.
- (void)countCurrentComponent {
    if (locationstr != nil)
        [selectedmodellocations addObject:locationstr];
    [self enableHostButton2:NO];
}

- (void)countSelectedComponents {
    selectedcomponentCount = static_cast<int>([selectedmodellocations count]);
    vant::hold(objIndexArray, [[myDownloadinfoArray copy] autorelease]);
}

- (void)listMediaSelection {
    vant::renew(selectedmodellocations);
    for (NSUInteger i = 0; i < [objects1 count]; ++i) {
        id entry = VantEntryAtIndex(selectedarrXML1, i);
        NSString *location = VantEntryText(entry, VantLocationKey);
        [self setCurrentLocation:location];
        [self countCurrentComponent];
        [self addPackage:VantMediaRecord(location, VantEntryText(entry, VantTypeKey)) inFlow:vant::Flow::Media];
    }
}

- (void)listMediaComponentsBesideSelection {
    vant::MediaSources sources;
    for (id entry in selectedarrXML1)
        sources.selection.push_back(VantMediaComponentOfEntry(entry));
    sources.uninstaller = vant::optionalUTF8(VantHostPackagePath(@"Uninstaller"));
    sources.secondScanDriver = vant::optionalUTF8([self secondScanDriverLocation]);
    sources.manual = vant::optionalUTF8(VantHostPackagePath(@"Manual"));
    sources.manualWanted = [self isManualWanted];
    for (const vant::MediaComponent &component : vant::addedMediaComponents(sources))
        [self addPackage:VantMediaRecord(vant::nsStringOrNil(component.location), vant::nsStringOrNil(component.kind))
                  inFlow:vant::Flow::Media];
}

@end

#import "SelectionFiles.h"

#import "Refusals.h"

#include "Locations.hpp"

static NSString *const mediaSelectionFile = @"SelectedInput.plist";
static NSString *const userSettingsFile = @"VantUserSettings.plist";
static NSString *const webUserSettingsFile = @"VantUserSettings-web.plist";

static NSString *absolute(NSString *location, NSString *base) {
    if (base == nil)
        return location;
    const std::string whole = vant::host::absoluteLocation([location UTF8String], [base UTF8String]);
    return [NSString stringWithUTF8String:whole.c_str()];
}

/// The value with every string under a key "LOCATION", or under "text" inside it, made absolute. Values of any shape
/// pass as they are: the pane has to stand whatever a selection file holds.
static id withAbsoluteLocations(id value, NSString *base, bool isLocation) {
    if ([value isKindOfClass:[NSString class]])
        return isLocation ? absolute(value, base) : value;
    if ([value isKindOfClass:[NSArray class]]) {
        NSMutableArray *array = [NSMutableArray arrayWithCapacity:[value count]];
        for (id element in value)
            [array addObject:withAbsoluteLocations(element, base, false)];
        return array;
    }
    if (![value isKindOfClass:[NSDictionary class]])
        return value;
    NSMutableDictionary *dictionary = [NSMutableDictionary dictionaryWithCapacity:[value count]];
    for (id key in value) {
        const bool text = isLocation && [key isEqual:@"text"];
        const bool location = text || [key isEqual:@"LOCATION"];
        [dictionary setObject:withAbsoluteLocations([value objectForKey:key], base, location) forKey:key];
    }
    return dictionary;
}

/// Copies a selection file, its locations made absolute; a file that is no property list is copied as it stands.
static void copySelection(NSString *source, NSString *base, NSString *target) {
    NSData *data = source != nil ? [NSData dataWithContentsOfFile:source] : nil;
    if (data == nil)
        return;
    id list = nil;
    @try {
        list = [NSPropertyListSerialization propertyListWithData:data options:0 format:nullptr error:nullptr];
    } @catch (NSException *exception) {
        NSLog(@"%@ is no property list: %@", source, [exception reason]);
    }
    if (![list isKindOfClass:[NSArray class]] && ![list isKindOfClass:[NSDictionary class]]) {
        [data writeToFile:target atomically:YES];
        return;
    }
    [[NSPropertyListSerialization dataWithPropertyList:withAbsoluteLocations(list, base, false)
                                                format:NSPropertyListXMLFormat_v1_0
                                               options:0
                                                 error:nullptr] writeToFile:target atomically:YES];
}

/// The media's choices for the flow: their own for the web flow when there are such, else those of the media flow.
static NSString *choicesFile(const HostSettings &settings) {
    NSString *ofWeb = [settings.media stringByAppendingPathComponent:webUserSettingsFile];
    if ([settings.flow isEqualToString:@"web"] && [[NSFileManager defaultManager] fileExistsAtPath:ofWeb])
        return ofWeb;
    return [settings.media stringByAppendingPathComponent:userSettingsFile];
}

static void writeUserSettings(const HostSettings &settings, NSString *target) {
    copySelection(choicesFile(settings), settings.media, target);
    NSMutableDictionary *choices = [NSMutableDictionary dictionaryWithContentsOfFile:target];
    if (choices == nil)
        choices = [NSMutableDictionary dictionary];
    [choices setObject:[settings.flow isEqualToString:@"web"] ? @"1" : @"0" forKey:@"Smart Update"];
    if (settings.debug)
        [choices setObject:@"debug_on" forKey:@"Debug"];
    [choices writeToFile:target atomically:YES];
}

/// Why what has been written is not installed, nil when it is.
static NSString *refusal(const HostSettings &settings, NSString *working) {
    if (NSString *ofAddress = VantRefusedAddress([working stringByAppendingPathComponent:mediaSelectionFile]))
        return ofAddress;
    for (NSString *file in @[ @"CD/SelectedInput.plist", userSettingsFile ])
        if (NSString *ofPackage = VantRefusedPackage([working stringByAppendingPathComponent:file]))
            return ofPackage;
    return VantRefusedProfile(settings.media);
}

static NSString *write(const HostSettings &settings) {
    NSFileManager *files = [NSFileManager defaultManager];
    NSString *working = [NSTemporaryDirectory() stringByAppendingPathComponent:@"Vantrel"];
    [files removeItemAtPath:working error:nullptr];
    [files createDirectoryAtPath:[working stringByAppendingPathComponent:@"CD"]
        withIntermediateDirectories:YES
                         attributes:nil
                              error:nullptr];
    copySelection([settings.media stringByAppendingPathComponent:mediaSelectionFile], settings.media,
                  [working stringByAppendingPathComponent:@"CD/SelectedInput.plist"]);
    copySelection(settings.webSelection, settings.site, [working stringByAppendingPathComponent:mediaSelectionFile]);
    writeUserSettings(settings, [working stringByAppendingPathComponent:userSettingsFile]);
    if (NSString *refused = refusal(settings, working)) {
        [files removeItemAtPath:working error:nullptr];
        return refused;
    }
    for (NSString *slides in @[ @"GTA", @"GTA_Default" ])
        [files copyItemAtPath:[settings.media stringByAppendingPathComponent:slides]
                       toPath:[working stringByAppendingPathComponent:slides]
                        error:nullptr];
    return nil;
}

// A selection is read and copied several times over. What that leaves goes before the pane makes its own lists of it,
// or long ones would lie in memory side by side.
NSString *VantWriteSelectionFiles(const HostSettings &settings) {
    NSString *refused = nil;
    @autoreleasepool {
        refused = [write(settings) retain];
    }
    return [refused autorelease];
}

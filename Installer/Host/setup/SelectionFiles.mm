#import "SelectionFiles.h"

#include "Locations.hpp"
#include "ShellCharacters.hpp"

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

/// The texts of a selection's locations.
static NSArray *locationsIn(NSArray *selection) {
    NSMutableArray *locations = [NSMutableArray array];
    for (id entry in selection) {
        id location = [entry isKindOfClass:[NSDictionary class]] ? [entry objectForKey:@"LOCATION"] : nil;
        id text = [location isKindOfClass:[NSDictionary class]] ? [location objectForKey:@"text"] : nil;
        if ([text isKindOfClass:[NSString class]])
            [locations addObject:text];
    }
    return locations;
}

/// Copies a selection file, its locations made absolute; a file that is no property list is copied as it stands.
static void copySelection(NSString *source, NSString *base, NSString *target) {
    NSData *data = source != nil ? [NSData dataWithContentsOfFile:source] : nil;
    if (data == nil)
        return;
    id list = nil;
    NS_DURING
    list = [NSPropertyListSerialization propertyListWithData:data options:0 format:nullptr error:nullptr];
    NS_HANDLER
    NSLog(@"%@ is no property list: %@", source, [localException reason]);
    NS_ENDHANDLER
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

/// Why a selection is not downloaded, nil when it is. An archive is expanded by a shell's command line that holds its
/// name, which comes from its address.
static NSString *refusalOf(NSString *selection) {
    for (NSString *location in locationsIn([NSArray arrayWithContentsOfFile:selection])) {
        if (const auto character = vant::host::shellCharacter([location UTF8String]))
            return [NSString
                stringWithFormat:@"the address %@ holds %s, which a shell would read", location, character->c_str()];
    }
    return nil;
}

NSString *VantWriteSelectionFiles(const HostSettings &settings) {
    NSFileManager *files = [NSFileManager defaultManager];
    NSString *working = [NSTemporaryDirectory() stringByAppendingPathComponent:@"Vantrel"];
    [files removeFileAtPath:working handler:nil];
    [files createDirectoryAtPath:[working stringByAppendingPathComponent:@"CD"]
        withIntermediateDirectories:YES
                         attributes:nil
                              error:nullptr];
    copySelection([settings.media stringByAppendingPathComponent:mediaSelectionFile], settings.media,
                  [working stringByAppendingPathComponent:@"CD/SelectedInput.plist"]);
    NSString *downloads = [working stringByAppendingPathComponent:mediaSelectionFile];
    copySelection(settings.webSelection, settings.site, downloads);
    if (NSString *refusal = refusalOf(downloads)) {
        [files removeFileAtPath:working handler:nil];
        return refusal;
    }
    writeUserSettings(settings, [working stringByAppendingPathComponent:userSettingsFile]);
    for (NSString *slides in @[ @"GTA", @"GTA_Default" ])
        [files copyPath:[settings.media stringByAppendingPathComponent:slides]
                 toPath:[working stringByAppendingPathComponent:slides]
                handler:nil];
    return nil;
}

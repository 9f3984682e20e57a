#import "Refusals.h"

#include "install/profiles/ColourProfiles.hpp"
#include "ShellCharacters.hpp"

/// Adds every string under a key "LOCATION", or under "text" inside it.
static void addLocations(id value, bool isLocation, NSMutableArray *found) {
    if ([value isKindOfClass:[NSString class]] && isLocation)
        [found addObject:value];
    if ([value isKindOfClass:[NSArray class]])
        for (id element in value)
            addLocations(element, false, found);
    if (![value isKindOfClass:[NSDictionary class]])
        return;
    for (id key in value) {
        const bool text = isLocation && [key isEqual:@"text"];
        addLocations([value objectForKey:key], text || [key isEqual:@"LOCATION"], found);
    }
}

static NSArray *locationsIn(NSString *file) {
    id list = [NSArray arrayWithContentsOfFile:file];
    if (list == nil)
        list = [NSMutableDictionary dictionaryWithContentsOfFile:file];
    NSMutableArray *found = [NSMutableArray array];
    addLocations(list, false, found);
    return found;
}

static NSString *refusalOf(NSString *what, NSString *text, const std::optional<std::string> &character) {
    if (!character)
        return nil;
    return [NSString stringWithFormat:@"the %@ %@ holds %s, which a shell would read", what, text, character->c_str()];
}

static NSString *refusalOfName(NSString *what, NSString *name) {
    return refusalOf(what, name, vant::host::shellCharacterInName([name UTF8String]));
}

NSString *VantRefusedAddress(NSString *file) {
    for (NSString *location in locationsIn(file))
        if (NSString *refusal = refusalOf(@"address", location, vant::host::shellCharacter([location UTF8String])))
            return refusal;
    return nil;
}

NSString *VantRefusedPackage(NSString *file) {
    for (NSString *location in locationsIn(file))
        if (NSString *refusal = refusalOfName(@"package", [location lastPathComponent]))
            return refusal;
    return nil;
}

NSString *VantRefusedProfile(NSString *media) {
    for (const std::string_view folder : {vant::installFilesFolder, vant::macDataFolder}) {
        NSString *profiles = [media stringByAppendingFormat:@"%s/Profiles", folder.data()];
        for (NSString *name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:profiles error:nullptr])
            if (NSString *refusal = refusalOfName(@"colour profile", name))
                return refusal;
    }
    return nil;
}

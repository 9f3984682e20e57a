#import "base/PropertyList.h"

#include "base/PropertyListCheck.hpp"

/// The property list in the file, with mutable containers. Nil when there is none that can be read, and for one that
/// the platform's reader would not survive: it recurses once a level and trusts the lengths of binary lists.
static id propertyListFromFile(NSString *path) {
    NSData *bytes = [NSData dataWithContentsOfFile:path];
    if (!vant::isPropertyListSafeToParse({static_cast<const char *>([bytes bytes]), [bytes length]}))
        return nil;
    @try {
        return [NSPropertyListSerialization propertyListWithData:bytes
                                                         options:NSPropertyListMutableContainers
                                                          format:nullptr
                                                           error:nullptr];
    } @catch (NSException *) {
        return nil;
    }
}

NSMutableArray *VantArrayFromFile(NSString *path) {
    id list = propertyListFromFile(path);
    return [list isKindOfClass:[NSMutableArray class]] ? list : nil;
}

NSMutableDictionary *VantDictionaryFromFile(NSString *path) {
    id list = propertyListFromFile(path);
    return [list isKindOfClass:[NSMutableDictionary class]] ? list : nil;
}

static id valueOfClass(id container, NSString *key, Class expected) {
    if (![container isKindOfClass:[NSDictionary class]])
        return nil;
    id value = [container objectForKey:key];
    return [value isKindOfClass:expected] ? value : nil;
}

NSString *VantStringForKey(id container, NSString *key) {
    return valueOfClass(container, key, [NSString class]);
}

NSDictionary *VantDictionaryForKey(id container, NSString *key) {
    return valueOfClass(container, key, [NSDictionary class]);
}

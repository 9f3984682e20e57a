#import "PropertyList.h"

#import "RecordKeys.h"

NSMutableArray *VantArrayFromFile(NSString *path) {
    return [NSMutableArray arrayWithContentsOfFile:path];
}

NSMutableDictionary *VantDictionaryFromFile(NSString *path) {
    return [NSMutableDictionary dictionaryWithContentsOfFile:path];
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

NSString *VantEntryText(id entry, NSString *key) {
    return VantStringForKey(VantDictionaryForKey(entry, key), VantTextKey);
}

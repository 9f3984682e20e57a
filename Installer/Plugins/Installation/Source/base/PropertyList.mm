#import "base/PropertyList.h"

#include "base/PropertyListCheck.hpp"
#include "base/TextBytes.hpp"

static id parsedBytes(NSData *bytes) {
    return [NSPropertyListSerialization propertyListWithData:bytes
                                                     options:NSPropertyListMutableContainers
                                                      format:nullptr
                                                       error:nullptr];
}

/// Old-style text in the encoding that it is marked with. Dictionaries may stand without their braces, as in a table of
/// strings.
static id parsedText(NSData *bytes, BOOL isUTF16) {
    NSString *text =
        [[[NSString alloc] initWithData:bytes
                               encoding:isUTF16 ? NSUnicodeStringEncoding : NSUTF8StringEncoding] autorelease];
    id list = nil;
    @try {
        list = [text propertyList];
    } @catch (NSException *) {
        list = nil;
    }
    if ([list isKindOfClass:[NSArray class]] || [list isKindOfClass:[NSDictionary class]])
        return list;
    NSDictionary *strings = [text propertyListFromStringsFileFormat];
    return [strings count] > 0 ? strings : nil;
}

/// The property list in the file, in any form that one of the platform's readers takes. Nil when there is none that can
/// be read, and for one that the readers would not survive: they recurse once a level and trust the lengths of binary
/// lists.
static id propertyListFromFile(NSString *path) {
    NSData *data = [NSData dataWithContentsOfFile:path];
    const std::string_view bytes(static_cast<const char *>([data bytes]), [data length]);
    if (!vant::isPropertyListSafeToParse(bytes))
        return nil;
    const std::string_view unmarked = vant::withoutUTF8Mark(bytes);
    NSData *text = [NSData dataWithBytes:unmarked.data() length:unmarked.size()];
    @try {
        id list = parsedBytes(text);
        return list != nil && ![list isKindOfClass:[NSString class]] ? list
                                                                     : parsedText(text, vant::isMarkedUTF16(bytes));
    } @catch (NSException *) {
        return nil;
    }
}

NSMutableArray *VantArrayFromFile(NSString *path) {
    id list = propertyListFromFile(path);
    return [list isKindOfClass:[NSArray class]] ? [[list mutableCopy] autorelease] : nil;
}

NSMutableDictionary *VantDictionaryFromFile(NSString *path) {
    id list = propertyListFromFile(path);
    return [list isKindOfClass:[NSDictionary class]] ? [[list mutableCopy] autorelease] : nil;
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

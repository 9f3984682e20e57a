#import "selection/SelectionEntry.h"

#import "base/Bridge.h"
#import "base/PropertyList.h"
#import "selection/ComponentRecord.h"

/// Key of the string inside an entry's "LOCATION" and "TYPE" dictionaries.
static NSString *const textKey = @"text";

NSString *VantEntryText(id entry, NSString *key) {
    return VantStringForKey(VantDictionaryForKey(entry, key), textKey);
}

id VantEntryAtIndex(NSArray *selection, NSUInteger index) {
    return index < [selection count] ? [selection objectAtIndex:index] : nil;
}

vant::MediaComponent VantMediaComponentOfEntry(id entry) {
    return {vant::optionalUTF8(VantEntryText(entry, VantLocationKey)),
            vant::optionalUTF8(VantEntryText(entry, VantTypeKey))};
}

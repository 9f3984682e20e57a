#import <Foundation/Foundation.h>

#include "selection/MediaList.hpp"

/// The text of a selection entry's element: the string under "text" of the dictionary under the key ("TYPE" or
/// "LOCATION"). Nil when any step is absent. Any thread, as all of these.
NSString *VantEntryText(id entry, NSString *key);

/// The selection's entry for a row, nil when the selection is shorter than the rows.
id VantEntryAtIndex(NSArray *selection, NSUInteger index);

/// The component that an entry of the media selection names.
vant::MediaComponent VantMediaComponentOfEntry(id entry);

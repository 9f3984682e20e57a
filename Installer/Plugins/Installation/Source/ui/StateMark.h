#include "ui/TableRows.hpp"
#import <Cocoa/Cocoa.h>

/// How a row's state looks where its spinner has stopped: a tick for done, a warning for not done; nothing for any
/// other.
NSString *VantStateMark(vant::RowState state);

/// The mark's colour, dark enough for a light ground.
NSColor *VantStateColour(vant::RowState state);

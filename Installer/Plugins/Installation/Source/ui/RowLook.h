#import <Cocoa/Cocoa.h>

#include "ui/TableRows.hpp"

@class BDObject;

/// How a row's state looks. Main thread.

/// What stands where the spinner has stopped: a tick for done, a warning for not done, a dash for what was not needed;
/// nothing for any other state.
NSString *VantStateMark(vant::RowState state);

/// The state in words, in the user's language.
NSString *VantStateWords(vant::RowState state);

/// The mark's colour, dark enough for a light ground.
NSColor *VantStateColour(vant::RowState state);

/// Brings a row's indicators in line with its state: the spinner turns at work, if it is in sight; the bar is full for
/// what has arrived or is done, and empty for what will not be installed.
void VantShowState(BDObject *row, vant::RowState state, BOOL inSight);

#import "ui/RowLook.h"

#import "base/Resources.h"
#import "download/BDObject.h"

using vant::RowState;

NSString *VantStateMark(RowState state) {
    switch (state) {
    case RowState::Done:
        return @"\u2713";
    case RowState::NotDone:
        return @"!"; // in every typeface, where signs of warning are pale or cut in some
    case RowState::NotNeeded:
        return @"\u2013";
    case RowState::Waiting:
    case RowState::AtWork:
    case RowState::Arrived:
        break;
    }
    return @"";
}

NSString *VantStateWords(RowState state) {
    switch (state) {
    case RowState::Waiting:
        break;
    case RowState::AtWork:
        return VantResourceString(@"RowAtWork");
    case RowState::Arrived:
        return VantResourceString(@"RowArrived");
    case RowState::Done:
        return VantResourceString(@"RowDone");
    case RowState::NotDone:
        return VantResourceString(@"RowNotDone");
    case RowState::NotNeeded:
        return VantResourceString(@"RowNotNeeded");
    }
    return VantResourceString(@"RowWaiting");
}

NSColor *VantStateColour(RowState state) {
    switch (state) {
    case RowState::Done:
        return [NSColor colorWithCalibratedRed:0.08 green:0.47 blue:0.22 alpha:1];
    case RowState::NotDone:
        return [NSColor colorWithCalibratedRed:0.70 green:0.25 blue:0.03 alpha:1];
    case RowState::NotNeeded:
    case RowState::Waiting:
    case RowState::AtWork:
    case RowState::Arrived:
        break;
    }
    return [NSColor colorWithCalibratedRed:0.36 green:0.40 blue:0.46 alpha:1];
}

static void spin(NSProgressIndicator *spinner, BOOL turns) {
    [spinner setHidden:!turns];
    if (turns)
        [spinner startAnimation:nil];
    else
        [spinner stopAnimation:nil];
}

void VantShowState(BDObject *row, RowState state, BOOL inSight) {
    spin([row continuousProgress], inSight && state == RowState::AtWork);
    NSProgressIndicator *bar = [row discreteProgress];
    if (state == RowState::Arrived || state == RowState::Done)
        [bar setDoubleValue:[bar maxValue]];
    if (state == RowState::NotDone || state == RowState::NotNeeded)
        [bar setDoubleValue:[bar minValue]];
}

#import "ui/StateMark.h"

using vant::RowState;

NSString *VantStateMark(RowState state) {
    switch (state) {
    case RowState::Done:
        return @"\u2713";
    case RowState::NotDone:
        return @"\u26A0\uFE0E";
    case RowState::Waiting:
    case RowState::AtWork:
    case RowState::Arrived:
        break;
    }
    return @"";
}

NSColor *VantStateColour(RowState state) {
    return state == RowState::Done ? [NSColor colorWithCalibratedRed:0.08 green:0.47 blue:0.22 alpha:1]
                                   : [NSColor colorWithCalibratedRed:0.70 green:0.25 blue:0.03 alpha:1];
}

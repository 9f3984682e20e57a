#import "Sentence.h"

#include <cmath>

/// What a text field leaves free on either side of its text.
static const CGFloat padding = 4;

NSTextField *VantSentence(NSFont *font) {
    NSTextField *field = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
    [field setFont:font];
    [field setEditable:NO];
    [field setSelectable:NO];
    [field setBezeled:NO];
    [field setDrawsBackground:NO];
    [[field cell] setWraps:YES];
    return field;
}

// The cell's own size would be that of one line on one of the platforms.
void VantFitSentence(NSTextField *field, NSString *text, CGFloat width) {
    [field setStringValue:text];
    const NSRect needed = [[field attributedStringValue] boundingRectWithSize:NSMakeSize(width - 2 * padding, 1000)
                                                                      options:NSStringDrawingUsesLineFragmentOrigin];
    [field setFrameSize:NSMakeSize(width, std::ceil(needed.size.height) + 2)];
}

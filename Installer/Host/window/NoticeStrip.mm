#import "NoticeStrip.h"

#import "Sentence.h"
#import "ThemeColours.h"

#include <algorithm>
#include <cmath>

static const CGFloat side = 20;
static const CGFloat gap = 12;
static const NSSize buttonSize = {112, 28};

static NSColor *paint(vant::host::Colour value) {
    return [NSColor colorWithCalibratedRed:value.red green:value.green blue:value.blue alpha:1];
}

@implementation NoticeStrip

- (id)initWithButton:(NSString *)title target:(id)target action:(SEL)action {
    self = [super initWithFrame:NSZeroRect];
    if (self == nil)
        return nil;
    [self setAutoresizingMask:NSViewWidthSizable | NSViewMaxYMargin];
    sentence = VantSentence([NSFont systemFontOfSize:13]);
    [sentence setAutoresizingMask:NSViewWidthSizable];
    [self addSubview:sentence];
    button = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
    [button setTitle:title];
    [button setBezelStyle:NSBezelStyleRounded];
    [button setTarget:target];
    [button setAction:action];
    [button setAutoresizingMask:NSViewMinXMargin];
    [self addSubview:button];
    return self;
}

- (void)setText:(NSString *)text {
    [sentence setStringValue:text];
}

- (CGFloat)layOutInWidth:(CGFloat)width {
    const CGFloat room = width - 2 * side - gap - buttonSize.width;
    VantFitSentence(sentence, [sentence stringValue], room);
    const CGFloat textHeight = [sentence frame].size.height;
    const CGFloat height = std::max(textHeight, buttonSize.height) + 2 * gap;
    [self setFrameSize:NSMakeSize(width, height)];
    // After the strip, whose own new size has carried its parts along.
    [sentence setFrame:NSMakeRect(side, std::floor((height - textHeight) / 2), room, textHeight)];
    [button setFrame:NSMakeRect(width - side - buttonSize.width, std::floor((height - buttonSize.height) / 2),
                                buttonSize.width, buttonSize.height)];
    [self setNeedsDisplay:YES];
    return height;
}

- (NSView *)button {
    return button;
}

- (void)drawRect:(NSRect)dirty {
    (void)dirty;
    [paint(vant::host::caution) set];
    NSRectFill([self bounds]);
}

@end

#import "base/Accessibility.h"

void VantLabel(id element, NSString *words) {
    if ([element respondsToSelector:@selector(setAccessibilityLabel:)])
        [element performSelector:@selector(setAccessibilityLabel:) withObject:words];
}

void VantDescribe(NSView *view, NSString *words) {
    [view setToolTip:words];
    VantLabel(view, words);
}

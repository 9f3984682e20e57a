#import "KeyLoop.h"

static void addViewsWithNext(NSView *view, NSMutableArray *found) {
    if ([view nextKeyView] != nil)
        [found addObject:view];
    for (NSView *each in [view subviews])
        addViewsWithNext(each, found);
}

static NSView *headOf(NSView *root) {
    NSMutableArray *leading = [NSMutableArray array];
    addViewsWithNext(root, leading);
    NSMutableArray *followers = [NSMutableArray array];
    for (NSView *each in leading)
        [followers addObject:[each nextKeyView]];
    for (NSView *each in leading) {
        if ([followers indexOfObjectIdenticalTo:each] == NSNotFound)
            return each;
    }
    return [leading count] > 0 ? [leading objectAtIndex:0] : nil;
}

NSArray *VantKeyChain(NSView *root) {
    NSMutableArray *chain = [NSMutableArray array];
    for (NSView *each = headOf(root); each != nil && [chain indexOfObjectIdenticalTo:each] == NSNotFound;
         each = [each nextKeyView])
        [chain addObject:each];
    return chain;
}

void VantCloseKeyLoop(NSArray *views) {
    for (NSUInteger i = 0; i < [views count]; ++i)
        [[views objectAtIndex:i] setNextKeyView:[views objectAtIndex:(i + 1) % [views count]]];
}

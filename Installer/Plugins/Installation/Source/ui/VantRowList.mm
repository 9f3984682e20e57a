#import "ui/VantRowList.h"

@implementation VantRowList

- (BOOL)acceptsFirstResponder {
    return NSHeight([self frame]) > NSHeight([[self enclosingScrollView] documentVisibleRect]);
}

@end

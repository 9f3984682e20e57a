#pragma once
#import <AppKit/AppKit.h>

/// The views that the Tab key walks below a view, in their order: the chain of next key views that begins at a view
/// which no other one leads to. Empty when there is none.
NSArray *VantKeyChain(NSView *root);

/// Makes one loop of the views, in their order.
void VantCloseKeyLoop(NSArray *views);

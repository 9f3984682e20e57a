#pragma once
#import <AppKit/AppKit.h>

/// A padlock, drawn to the size of the view.
@interface VantPadlock : NSView
@end

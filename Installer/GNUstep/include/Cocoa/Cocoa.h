#pragma once
#include_next <Cocoa/Cocoa.h>

/// Tracking areas of a view: declared by AppKit on macOS, supplied by this layer here.
@interface NSView (VantTrackingAreas)
- (void)addTrackingArea:(NSTrackingArea *)area;
- (void)removeTrackingArea:(NSTrackingArea *)area;
- (NSArray *)trackingAreas;
- (void)updateTrackingAreas;
@end

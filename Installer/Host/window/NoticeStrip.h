#pragma once
#import <AppKit/AppKit.h>

/// A strip with a sentence and a button to its right, as high as the sentence needs. Main thread.
@interface NoticeStrip : NSView {
    NSTextField *sentence;
    NSButton *button;
}

/// The button is titled as given and sends the action to the target, which is not owned.
- (id)initWithButton:(NSString *)title target:(id)target action:(SEL)action;

- (void)setText:(NSString *)text;

/// Lays text and button out for the width. Gives the height that the strip needs.
- (CGFloat)layOutInWidth:(CGFloat)width;

/// The strip's only control.
- (NSView *)button;

@end

#pragma once
#import <AppKit/AppKit.h>

/// A text that is read only and wraps. Main thread.
NSTextField *VantSentence(NSFont *font);

/// Puts the text into the field and makes the field as wide as given and as high as the text needs.
void VantFitSentence(NSTextField *field, NSString *text, CGFloat width);

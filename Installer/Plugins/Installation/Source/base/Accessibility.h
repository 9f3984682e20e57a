#import <AppKit/AppKit.h>

/// Words for what shows none, spoken to those who do not see it. Main thread.

/// The label of a view or a cell, where the platform has labels.
void VantLabel(id element, NSString *words);

/// A label and a tool tip, which every platform speaks.
void VantDescribe(NSView *view, NSString *words);

/// Has words read out that have just appeared in a view, to those who do not look there: the text of a line that
/// changes by itself. Nothing for a view without a window, or without words.
void VantAnnounce(NSView *view, NSString *words);

#import <AppKit/AppKit.h>

/// What the plug-in brings in its own bundle.

/// The string for a key of table "Localizable-Inst"; the key itself when the table lacks it. Any thread.
NSString *VantResourceString(NSString *key);

/// The image of that file name, loaded once, at single and double size, so that a screen of either resolution draws all
/// the pixels it has; nil when there is none. Not to be changed. Main thread.
NSImage *VantResourceImage(NSString *fileName);

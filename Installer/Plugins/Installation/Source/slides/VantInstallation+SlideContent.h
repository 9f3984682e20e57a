#import "shell/VantInstallation.h"

/// The content of the two information pages. Look-ups fail soft: nil stands for "not there". Thread: main.
@interface VantInstallation (SlideContent)
/// Path of the slide image: of the main set for a nil flag, of the fall-back set for any other.
- (NSString *)getGTAImagePath:(id)fallBack;
/// Title from the set's "string.xml"; empty text counts as present.
- (NSString *)getGTATitlestring:(id)fallBack;
/// Description from the set's "string.xml"; empty text counts as present.
- (NSString *)getGTADescString:(id)fallBack;
- (NSString *)getDefaultGTAImagePath;
- (NSString *)getDefaultGTATitlestring;
- (NSString *)getDefaultGTADescString;

/// Page 0's image, title and description, each through its own chain of fall-backs.
- (NSImage *)firstSlideImage;
/// Where page 0's image lies; nil when it is the built-in one. The file is not opened.
- (NSString *)firstSlideImagePath;
/// Page 0's image, loaded from there.
- (NSImage *)firstSlideImageAtPath:(NSString *)path;
- (NSString *)firstSlideTitle;
- (NSString *)firstSlideDescription;
/// The text with every "__MFG__" replaced by the vendor's name.
- (NSString *)vendorText:(NSString *)text;
/// The host's string for the key with every "__MFG__" replaced by the vendor's name.
- (NSString *)vendorStringForKey:(NSString *)key;
/// An image of the plug-in's own resources by file name; nil when there is none.
- (NSImage *)resourceImageNamed:(NSString *)fileName;
@end

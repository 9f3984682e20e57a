#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

/// A light theme for GNUstep: white windows, rounded blue bars and rounded buttons, Inter for a typeface and Noto Sans
/// CJK where the user reads Korean or Chinese. Main thread.
@interface VantTheme : GSTheme
/// Registers the theme's fonts, which AppKit asks for only once: call it before the application object is made.
+ (void)registerFonts;
/// Makes this the application's theme; its images lie in the application's own resources.
+ (void)use;
@end

@interface VantTheme (Scrollers)
/// Gives all scrollers of the process knobs that are long enough to be caught, and no arrows.
+ (void)shapeScrollers;
@end

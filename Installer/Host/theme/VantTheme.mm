#import "VantTheme.h"

#include "base/Languages.hpp"
#import "ThemeColours.h"

static NSString *typefaceForScript(vant::Script script) {
    switch (script) {
    case vant::Script::Latin:
        return @"Inter";
    case vant::Script::Korean:
        return @"NotoSansCJKkr";
    case vant::Script::SimplifiedChinese:
        return @"NotoSansCJKsc";
    case vant::Script::TraditionalChinese:
        return @"NotoSansCJKtc";
    }
}

/// The typeface for the language that the user reads best.
static NSString *typeface(void) {
    NSArray *languages = [[NSUserDefaults standardUserDefaults] stringArrayForKey:@"NSLanguages"];
    NSString *language = [languages count] > 0 ? [languages objectAtIndex:0] : @"";
    const vant::Language *known = vant::languageOfLocale([language UTF8String]);
    return typefaceForScript(known ? known->script : vant::Script::Latin);
}

static NSColor *colour(vant::host::Colour value) {
    return [NSColor colorWithCalibratedRed:value.red green:value.green blue:value.blue alpha:1.0];
}

static NSString *const themeName = @"Vant";

@implementation VantTheme

+ (void)registerFonts {
    NSString *regular = [typeface() stringByAppendingString:@"-Regular"];
    NSString *bold = [typeface() stringByAppendingString:@"-Bold"];
    NSMutableDictionary *fonts = [NSMutableDictionary dictionary];
    for (NSString *role in @[
             @"NSFont", @"NSUserFont", @"NSControlContentFont", @"NSLabelFont", @"NSMenuFont", @"NSMessageFont",
             @"NSToolTipsFont"
         ])
        [fonts setObject:regular forKey:role];
    for (NSString *role in @[ @"NSBoldFont", @"NSTitleBarFont", @"NSPaletteFont" ])
        [fonts setObject:bold forKey:role];
    [fonts setObject:@"13" forKey:@"NSFontSize"];
    [[NSUserDefaults standardUserDefaults] registerDefaults:fonts];
}

+ (void)use {
    // The platform reads the theme's name again whenever it synchronises its defaults, half a minute after the start,
    // and puts its own theme in the place of one that they do not name.
    [[NSUserDefaults standardUserDefaults] registerDefaults:@{@"GSTheme" : themeName}];
    VantTheme *theme = [[VantTheme alloc] initWithBundle:[NSBundle mainBundle]];
    [self shapeScrollers];
    [GSTheme setTheme:theme];
    [theme release];
}

- (NSString *)name {
    return themeName;
}

- (NSColorList *)colors {
    NSColorList *list = [[[NSColorList alloc] initWithName:@"System"] autorelease];
    for (const vant::host::NamedColour &each : vant::host::systemColours)
        [list setColor:colour(each.colour) forKey:[NSString stringWithUTF8String:each.name]];
    return list;
}

- (Class)colorClass {
    return [NSColor class];
}

@end

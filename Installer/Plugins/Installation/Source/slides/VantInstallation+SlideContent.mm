#import "shell/VantInstallation+HostLink.h"
#import "slides/VantInstallation+SlideContent.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/PropertyList.h"
#import "base/Resources.h"
#import "shell/SettingsKeys.h"
#include "slides/SlideText.hpp"

static NSString *const mainSet = @"Vantrel/GTA/%@/%@";
static NSString *const fallBackSet = @"Vantrel/GTA_Default/%@/%@";
static NSString *const slideImage = @"image.png";
static NSString *const slideText = @"string.xml";

/// The path of a slide file when a file lies there; of the main set for a nil flag, of the fall-back set for any other.
static NSString *existingSlideFile(NSString *name, id fallBack) {
    NSString *language = [[NSBundle mainBundle] localizedStringForKey:@"Language Setting" value:@"" table:nil];
    NSString *relative = [NSString stringWithFormat:fallBack == nil ? mainSet : fallBackSet, language, name];
    NSString *path = VantTemporaryPath(relative);
    return [[NSFileManager defaultManager] fileExistsAtPath:path] ? path : nil;
}

/// The text of one element of the set's slide file; nil when the file is not there or no text.
static NSString *elementOfSlideFile(id fallBack, const char *opening, const char *closing) {
    NSString *path = existingSlideFile(slideText, fallBack);
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    NSString *content = path == nil ? nil : [NSString stringWithContentsOfFile:path];
#pragma clang diagnostic pop
    if (content == nil)
        return nil;
    return vant::nsString(vant::textBetween(vant::utf8(content), opening, closing));
}

static NSString *firstPresent(NSString *main, NSString *fallBack) {
    return main != nil ? main : fallBack;
}

@implementation VantInstallation (SlideContent)

- (NSString *)getGTAImagePath:(id)fallBack {
    return existingSlideFile(slideImage, fallBack);
}

- (NSString *)getGTATitlestring:(id)fallBack {
    return elementOfSlideFile(fallBack, "<TITLE>", "</TITLE>");
}

- (NSString *)getGTADescString:(id)fallBack {
    return elementOfSlideFile(fallBack, "<MESSAGE>", "</MESSAGE>");
}

- (NSString *)getDefaultGTAImagePath {
    return [self getGTAImagePath:@"Default"];
}

- (NSString *)getDefaultGTATitlestring {
    return [self getGTATitlestring:@"Default"];
}

- (NSString *)getDefaultGTADescString {
    return [self getGTADescString:@"Default"];
}

- (NSString *)firstSlideImagePath {
    return firstPresent([self getGTAImagePath:nil], [self getDefaultGTAImagePath]);
}

- (NSImage *)firstSlideImageAtPath:(NSString *)path {
    return path == nil ? [self resourceImageNamed:@"Toner.jpg"]
                       : [[[NSImage alloc] initWithContentsOfFile:path] autorelease];
}

- (NSImage *)firstSlideImage {
    return [self firstSlideImageAtPath:[self firstSlideImagePath]];
}

- (NSString *)firstSlideTitle {
    NSString *title = firstPresent([self getGTATitlestring:nil], [self getDefaultGTATitlestring]);
    return title != nil ? title : [self vendorStringForKey:@"TONER.TITLE"];
}

- (NSString *)firstSlideDescription {
    NSString *description = firstPresent([self getGTADescString:nil], [self getDefaultGTADescString]);
    return description != nil ? description : [self vendorStringForKey:@"TONER.DESC"];
}

// A host that names no vendor gets the text without the name: an empty place in a sentence, and never a fault.
- (NSString *)vendorText:(NSString *)text {
    const std::string vendor = vant::utf8(VantStringForKey(modelInfo, VantVendorNameKey));
    return vant::nsString(vant::withVendorName(vant::utf8(text), vendor));
}

- (NSString *)vendorStringForKey:(NSString *)key {
    return [self vendorText:[self hostStringForKey:key]];
}

- (NSImage *)resourceImageNamed:(NSString *)fileName {
    return VantResourceImage(fileName);
}

@end

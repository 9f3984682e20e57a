#import "base/Resources.h"

/// By its class the plug-in finds its own bundle.
@interface VantResources : NSObject
@end

@implementation VantResources
@end

static NSBundle *plugIn() {
    return [NSBundle bundleForClass:[VantResources class]];
}

NSString *VantResourceString(NSString *key) {
    return [plugIn() localizedStringForKey:key value:nil table:@"Localizable-Inst"];
}

/// Path of the same picture with twice the pixels: "Toner@2x.jpg" for "Toner.jpg".
static NSString *doublePath(NSString *path) {
    return [NSString stringWithFormat:@"%@@2x.%@", [path stringByDeletingPathExtension], [path pathExtension]];
}

static BOOL hasPixels(NSImage *image, NSInteger width) {
    for (NSImageRep *each in [image representations])
        if ([each pixelsWide] == width)
            return YES;
    return NO;
}

static NSImage *loadedImage(NSString *path) {
    NSImage *image = path == nil ? nil : [[NSImage alloc] initWithContentsOfFile:path];
    // An image made from a file opens that file alone.
    for (NSImageRep *twice in image == nil ? nil : [NSImageRep imageRepsWithContentsOfFile:doublePath(path)]) {
        [twice setSize:[image size]];
        if (!hasPixels(image, [twice pixelsWide]))
            [image addRepresentation:twice];
    }
    return [image autorelease];
}

NSImage *VantResourceImage(NSString *fileName) {
    static NSMutableDictionary *const loaded = [[NSMutableDictionary alloc] init];
    NSImage *image = [loaded objectForKey:fileName];
    if (image == nil) {
        image = loadedImage([plugIn() pathForResource:fileName ofType:nil]);
        if (image != nil)
            [loaded setObject:image forKey:fileName];
    }
    return image;
}

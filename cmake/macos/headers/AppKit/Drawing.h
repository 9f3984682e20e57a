#pragma once
#import <Foundation/Foundation.h>

/// Colours, fonts, pictures, cursors, and the attributes of text.

NS_ASSUME_NONNULL_BEGIN

@interface NSColor : NSObject <NSCopying>
+ (NSColor *)colorWithCalibratedRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
@property (class, readonly, strong) NSColor *blackColor;
@property (class, readonly, strong) NSColor *blueColor;
@property (class, readonly, strong) NSColor *redColor;
@property (class, readonly, strong) NSColor *whiteColor;
@property (class, readonly, strong) NSColor *controlTextColor;
@property (class, readonly, strong) NSColor *linkColor API_AVAILABLE(macos(10.10));
- (void)set;
@end

@interface NSFont : NSObject <NSCopying>
+ (nullable NSFont *)fontWithName:(NSString *)name size:(CGFloat)size;
+ (NSFont *)systemFontOfSize:(CGFloat)size;
+ (NSFont *)boldSystemFontOfSize:(CGFloat)size;
@property (class, readonly) CGFloat systemFontSize;
@property (readonly) CGFloat pointSize;
@end

@interface NSImageRep : NSObject <NSCopying>
+ (nullable NSArray<__kindof NSImageRep *> *)imageRepsWithContentsOfFile:(NSString *)path;
+ (nullable __kindof NSImageRep *)imageRepWithContentsOfFile:(NSString *)path;
@property NSSize size;
@property NSInteger pixelsWide;
@property NSInteger pixelsHigh;
@end

@interface NSBitmapImageRep : NSImageRep
+ (nullable instancetype)imageRepWithData:(NSData *)data;
@end

@interface NSImage : NSObject <NSCopying>
- (instancetype)initWithSize:(NSSize)size NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithContentsOfFile:(NSString *)path;
@property NSSize size;
@property (readonly, copy) NSArray<NSImageRep *> *representations;
- (void)addRepresentation:(NSImageRep *)representation;
- (void)addRepresentations:(NSArray<NSImageRep *> *)representations;
@property (getter=isValid, readonly) BOOL valid;
@end

@interface NSBundle (Images)
- (nullable NSImage *)imageForResource:(NSString *)name API_AVAILABLE(macos(10.7));
- (nullable NSString *)pathForImageResource:(NSString *)name;
@end

@interface NSCursor : NSObject
@property (class, readonly, strong) NSCursor *arrowCursor;
@property (class, readonly, strong) NSCursor *pointingHandCursor API_AVAILABLE(macos(10.3));
- (void)set;
@end

PLATFORM_EXPORT void NSRectFill(NSRect rect);

PLATFORM_EXPORT NSAttributedStringKey const NSFontAttributeName;
PLATFORM_EXPORT NSAttributedStringKey const NSForegroundColorAttributeName;
PLATFORM_EXPORT NSAttributedStringKey const NSUnderlineStyleAttributeName;

typedef NS_OPTIONS(NSInteger, NSUnderlineStyle) {
    NSUnderlineStyleNone = 0x00,
    NSUnderlineStyleSingle = 0x01,
    NSUnderlineStyleThick = 0x02,
    NSUnderlineStyleDouble = 0x09,
};

typedef NS_ENUM(NSUInteger, NSLineBreakMode) {
    NSLineBreakByWordWrapping,
    NSLineBreakByCharWrapping,
    NSLineBreakByClipping,
    NSLineBreakByTruncatingHead,
    NSLineBreakByTruncatingTail,
    NSLineBreakByTruncatingMiddle,
};

typedef NS_OPTIONS(NSInteger, NSStringDrawingOptions) {
    NSStringDrawingUsesLineFragmentOrigin = 1 << 0,
};

@interface NSAttributedString (Drawing)
- (NSRect)boundingRectWithSize:(NSSize)size
                       options:(NSStringDrawingOptions)options
    API_DEPRECATED("Use -boundingRectWithSize:options:context: instead", macos(10.0, 27.0));
@end

NS_ASSUME_NONNULL_END

#pragma once
#import <AppKit/Views.h>

/// Cells: what controls and table columns are drawn with.

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSControlSize) {
    NSControlSizeRegular,
    NSControlSizeSmall,
    NSControlSizeMini,
    NSControlSizeLarge API_AVAILABLE(macos(11.0)),
};

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueMixed = -1;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

@interface NSCell : NSObject <NSCopying, NSCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initTextCell:(NSString *)text NS_DESIGNATED_INITIALIZER;
- (instancetype)initImageCell:(nullable NSImage *)image NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@property (nullable, assign) NSView *controlView;
@property (nullable, strong) NSImage *image;
@property NSInteger tag;
@property NSControlStateValue state;
@property NSControlSize controlSize;
@property (nullable, copy) id objectValue;
@property (copy) NSString *stringValue;
@property (nullable, strong) NSFont *font;
@property (getter=isEnabled) BOOL enabled;
@property (getter=isBordered) BOOL bordered;
@property (getter=isSelectable) BOOL selectable;
@property (getter=isEditable) BOOL editable;
@property BOOL wraps;
@property NSLineBreakMode lineBreakMode API_AVAILABLE(macos(10.5));
@property (readonly) NSSize cellSize;
- (NSRect)titleRectForBounds:(NSRect)bounds;
- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView *)view;
- (void)drawWithFrame:(NSRect)frame inView:(NSView *)view;
@end

@interface NSActionCell : NSCell
@end

@interface NSTextFieldCell : NSActionCell
@property (nullable, copy) NSColor *textColor;
@property (nullable, copy) NSColor *backgroundColor;
@property BOOL drawsBackground;
@end

@interface NSButtonCell : NSActionCell
@property (copy) NSString *title;
@property (copy) NSAttributedString *attributedTitle;
@end

NS_ASSUME_NONNULL_END

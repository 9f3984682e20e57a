#pragma once
#import <AppKit/Cells.h>

/// Controls.

NS_ASSUME_NONNULL_BEGIN

@interface NSControl : NSView
@property (nullable, strong) __kindof NSCell *cell;
@property (nullable, weak) id target;
@property (nullable) SEL action;
@property NSInteger tag;
@property (getter=isEnabled) BOOL enabled;
@property (nullable, strong) NSFont *font;
@property (copy) NSString *stringValue;
@property (copy) NSAttributedString *attributedStringValue;
@property int intValue;
@property NSInteger integerValue API_AVAILABLE(macos(10.5));
@property double doubleValue;
@property (nullable, copy) id objectValue;
- (void)performClick:(nullable id)sender;
- (void)sizeToFit;
@end

@interface NSTextField : NSControl
@property (nullable, copy) NSColor *textColor;
@property (getter=isEditable) BOOL editable;
@property (getter=isSelectable) BOOL selectable;
@property (getter=isBezeled) BOOL bezeled;
@property BOOL drawsBackground;
@end

typedef NS_ENUM(NSUInteger, NSBezelStyle) {
    NSBezelStyleRounded = 1,
};

@interface NSButton : NSControl
@property (copy) NSString *title;
@property (copy) NSAttributedString *attributedTitle;
@property (nullable, strong) NSImage *image;
@property NSControlStateValue state;
@property (getter=isBordered) BOOL bordered;
@property NSBezelStyle bezelStyle;
@property (copy) NSString *keyEquivalent;
@end

@interface NSImageView : NSControl
@property (nullable, strong) NSImage *image;
@end

typedef NS_ENUM(NSUInteger, NSMatrixMode) {
    NSRadioModeMatrix = 0,
    NSHighlightModeMatrix = 1,
    NSListModeMatrix = 2,
    NSTrackModeMatrix = 3,
};

@interface NSMatrix : NSControl
@property NSMatrixMode mode;
@property BOOL allowsEmptySelection;
@property (readonly, copy) NSArray<__kindof NSCell *> *cells;
@property (readonly) NSInteger selectedColumn;
@property (readonly) NSInteger selectedRow;
@property (readonly) NSInteger numberOfRows;
@property (readonly) NSInteger numberOfColumns;
- (nullable __kindof NSCell *)cellAtRow:(NSInteger)row column:(NSInteger)column;
- (void)selectCellAtRow:(NSInteger)row column:(NSInteger)column;
- (void)deselectAllCells;
- (void)setToolTip:(nullable NSString *)text forCell:(NSCell *)cell;
@end

typedef NS_ENUM(NSUInteger, NSProgressIndicatorStyle) {
    NSProgressIndicatorStyleBar = 0,
    NSProgressIndicatorStyleSpinning = 1,
};

static const NSProgressIndicatorStyle NSProgressIndicatorBarStyle
    API_DEPRECATED_WITH_REPLACEMENT("NSProgressIndicatorStyleBar", macos(10.2, 10.14)) = NSProgressIndicatorStyleBar;
static const NSProgressIndicatorStyle NSProgressIndicatorSpinningStyle API_DEPRECATED_WITH_REPLACEMENT(
    "NSProgressIndicatorStyleSpinning", macos(10.2, 10.14)) = NSProgressIndicatorStyleSpinning;

@interface NSProgressIndicator : NSView
@property (getter=isIndeterminate) BOOL indeterminate;
@property NSControlSize controlSize;
@property NSProgressIndicatorStyle style API_AVAILABLE(macos(10.2));
@property (getter=isDisplayedWhenStopped) BOOL displayedWhenStopped API_AVAILABLE(macos(10.2));
@property double doubleValue;
@property double minValue;
@property double maxValue;
- (void)incrementBy:(double)step;
- (void)startAnimation:(nullable id)sender;
- (void)stopAnimation:(nullable id)sender;
- (void)sizeToFit API_AVAILABLE(macos(10.2));
@end

NS_ASSUME_NONNULL_END

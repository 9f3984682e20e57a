#pragma once
#import <AppKit/Drawing.h>

/// Responders, views, what scrolls and tracks, windows.

NS_ASSUME_NONNULL_BEGIN

@class NSEvent, NSScrollView, NSWindow;

@interface NSResponder : NSObject <NSCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@property (nullable, assign) NSResponder *nextResponder;
@property (readonly) BOOL acceptsFirstResponder;
- (void)mouseDown:(NSEvent *)event;
- (void)mouseUp:(NSEvent *)event;
- (void)mouseEntered:(NSEvent *)event;
- (void)mouseExited:(NSEvent *)event;
- (void)keyDown:(NSEvent *)event;
- (void)cursorUpdate:(NSEvent *)event API_AVAILABLE(macos(10.5));
@end

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
    NSViewNotSizable = 0,
    NSViewMinXMargin = 1,
    NSViewWidthSizable = 2,
    NSViewMaxXMargin = 4,
    NSViewMinYMargin = 8,
    NSViewHeightSizable = 16,
    NSViewMaxYMargin = 32,
};

typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingMouseMoved = 0x02,
    NSTrackingCursorUpdate = 0x04,
    NSTrackingActiveWhenFirstResponder = 0x10,
    NSTrackingActiveInKeyWindow = 0x20,
    NSTrackingActiveInActiveApp = 0x40,
    NSTrackingActiveAlways = 0x80,
    NSTrackingAssumeInside = 0x100,
    NSTrackingInVisibleRect = 0x200,
    NSTrackingEnabledDuringMouseDrag = 0x400,
};

API_AVAILABLE(macos(10.5))
@interface NSTrackingArea : NSObject <NSCopying, NSCoding>
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary<id, id> *)userInfo;
@property (readonly) NSRect rect;
@end

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@property NSRect frame;
@property NSRect bounds;
@property (readonly) NSRect visibleRect;
@property NSAutoresizingMaskOptions autoresizingMask;
@property (nullable, readonly, assign) NSWindow *window;
@property (nullable, readonly, assign) NSView *superview;
@property (copy) NSArray<__kindof NSView *> *subviews;
@property (nullable, readonly, strong) NSScrollView *enclosingScrollView;
@property (nullable, assign) NSView *nextKeyView;
@property (nullable, readonly, assign) NSView *nextValidKeyView;
@property (readonly) NSInteger tag;
@property (getter=isHidden) BOOL hidden API_AVAILABLE(macos(10.3));
@property BOOL needsDisplay;
@property BOOL postsFrameChangedNotifications;
@property BOOL postsBoundsChangedNotifications;
- (nullable __kindof NSView *)viewWithTag:(NSInteger)tag;
- (void)addSubview:(NSView *)view;
- (void)removeFromSuperview;
- (void)setFrameSize:(NSSize)size;
- (void)setFrameOrigin:(NSPoint)origin;
- (void)setNeedsDisplayInRect:(NSRect)rect;
- (void)drawRect:(NSRect)rect;
- (NSPoint)convertPoint:(NSPoint)point fromView:(nullable NSView *)view;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView *)view;
@end

@interface NSView (ToolTip)
@property (nullable, copy) NSString *toolTip;
@end

@interface NSView (Tracking)
- (void)addTrackingArea:(NSTrackingArea *)area API_AVAILABLE(macos(10.5));
- (void)removeTrackingArea:(NSTrackingArea *)area API_AVAILABLE(macos(10.5));
- (void)updateTrackingAreas API_AVAILABLE(macos(10.5));
@property (readonly, copy) NSArray<NSTrackingArea *> *trackingAreas API_AVAILABLE(macos(10.5));
@end

@interface NSView (Accessibility)
- (void)setAccessibilityLabel:(nullable NSString *)label API_AVAILABLE(macos(10.10));
@end

typedef NSString *NSAccessibilityNotificationName;
typedef NSString *NSAccessibilityNotificationUserInfoKey;

PLATFORM_EXPORT NSAccessibilityNotificationName const
    NSAccessibilityAnnouncementRequestedNotification API_AVAILABLE(macos(10.7));
PLATFORM_EXPORT NSAccessibilityNotificationUserInfoKey const NSAccessibilityAnnouncementKey API_AVAILABLE(macos(10.7));
PLATFORM_EXPORT void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id> *_Nullable userInfo) API_AVAILABLE(macos(10.7));

PLATFORM_EXPORT NSNotificationName const NSViewBoundsDidChangeNotification;
PLATFORM_EXPORT NSNotificationName const NSViewFrameDidChangeNotification;

@interface NSClipView : NSView
@property (nullable, strong) __kindof NSView *documentView;
@property (readonly) NSRect documentVisibleRect;
@end

@interface NSScrollView : NSView
- (void)tile;
@property (readonly) NSRect documentVisibleRect;
@property (strong) NSClipView *contentView;
@property (nullable, strong) __kindof NSView *documentView;
@end

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1,
    NSWindowStyleMaskClosable = 2,
    NSWindowStyleMaskMiniaturizable = 4,
    NSWindowStyleMaskResizable = 8,
};

typedef NS_ENUM(NSUInteger, NSBackingStoreType) {
    NSBackingStoreBuffered = 2,
};

@protocol NSWindowDelegate <NSObject>
@optional
- (BOOL)windowShouldClose:(NSWindow *)window;
- (void)windowWillClose:(NSNotification *)notification;
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)deferred NS_DESIGNATED_INITIALIZER;
@property (copy) NSString *title;
@property (nullable, strong) __kindof NSView *contentView;
@property (nullable, weak) id<NSWindowDelegate> delegate;
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property NSSize contentMinSize API_AVAILABLE(macos(10.3));
- (void)setContentSize:(NSSize)size;
@property (nullable, assign) NSView *initialFirstResponder;
@property (nullable, readonly, weak) NSResponder *firstResponder;
- (BOOL)makeFirstResponder:(nullable NSResponder *)responder;
- (void)center;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderOut:(nullable id)sender;
- (void)displayIfNeeded;
- (void)performClose:(nullable id)sender;
@end

@interface NSPanel : NSWindow
@end

typedef NS_ENUM(NSUInteger, NSBoxType) {
    NSBoxPrimary = 0,
    NSBoxSeparator = 2,
};

typedef NS_ENUM(NSUInteger, NSTitlePosition) {
    NSNoTitle = 0,
};

@interface NSBox : NSView
@property NSBoxType boxType;
@property NSTitlePosition titlePosition;
@end

NS_ASSUME_NONNULL_END

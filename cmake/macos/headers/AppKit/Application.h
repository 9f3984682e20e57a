#pragma once
#import <AppKit/Views.h>

/// The application and its events, the workspace, the loading of nibs.

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSEventType) {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeMouseEntered = 8,
    NSEventTypeMouseExited = 9,
    NSEventTypeCursorUpdate = 17,
};

typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskLeftMouseDown = 1ULL << NSEventTypeLeftMouseDown,
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskAny = ~0ULL,
};

static const NSEventMask NSLeftMouseDownMask API_DEPRECATED_WITH_REPLACEMENT("NSEventMaskLeftMouseDown",
                                                                             macos(10.0,
                                                                                   10.12)) = NSEventMaskLeftMouseDown;

PLATFORM_EXPORT NSRunLoopMode const NSModalPanelRunLoopMode;
PLATFORM_EXPORT NSRunLoopMode const NSEventTrackingRunLoopMode;

@interface NSEvent : NSObject <NSCopying, NSCoding>
@property (readonly) NSEventType type;
@property (readonly) NSPoint locationInWindow;
@property (nullable, readonly, copy) NSString *characters;
@end

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification *)notification;
@end

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};

typedef NSInteger NSModalResponse;

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication *sharedApplication;
@property (nullable, weak) id<NSApplicationDelegate> delegate;
@property (readonly, copy) NSArray<NSWindow *> *windows;
- (void)run;
- (void)stop:(nullable id)sender;
- (void)terminate:(nullable id)sender;
- (NSModalResponse)runModalForWindow:(NSWindow *)window;
- (void)stopModalWithCode:(NSModalResponse)answer;
- (void)abortModal;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy API_AVAILABLE(macos(10.6));
- (nullable NSEvent *)nextEventMatchingMask:(NSEventMask)mask
                                  untilDate:(nullable NSDate *)limit
                                     inMode:(NSRunLoopMode)mode
                                    dequeue:(BOOL)dequeue;
- (void)discardEventsMatchingMask:(NSEventMask)mask beforeEvent:(nullable NSEvent *)last;
@end

PLATFORM_EXPORT __kindof NSApplication *_Null_unspecified NSApp;

@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace *sharedWorkspace;
- (BOOL)openURL:(NSURL *)address;
- (BOOL)openFile:(NSString *)path API_DEPRECATED("Use -openURL: instead", macos(10.0, 11.0));
@end

@interface NSObject (NibAwaking)
- (void)awakeFromNib;
@end

@interface NSBundle (NibLoading)
- (BOOL)loadNibNamed:(NSString *)name
               owner:(nullable id)owner
     topLevelObjects:(NSArray *_Nullable *_Nullable)objects API_AVAILABLE(macos(10.8));
+ (BOOL)loadNibNamed:(NSString *)name
               owner:(nullable id)owner
    API_DEPRECATED("Use -loadNibNamed:owner:topLevelObjects: instead", macos(10.0, 10.8));
@end

NS_ASSUME_NONNULL_END

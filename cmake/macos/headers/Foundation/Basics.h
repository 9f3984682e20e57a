#pragma once
#include <math.h>
#include <objc/NSObject.h>
#include <stdarg.h>
#include <stdint.h>
#include <sys/types.h>
#include <TargetConditionals.h>

/// What every declaration of these headers stands on: integers, ranges, rectangles, and the forms of enumerations.
/// Whatever has no availability beside it has been there since 10.0.

#define PLATFORM_EXPORT extern "C"

#define NS_FORMAT_FUNCTION(text, first) __attribute__((format(__NSString__, text, first)))
#define NS_REQUIRES_NIL_TERMINATION __attribute__((sentinel(0, 1)))
#define NS_ENUM(type, name)                                                                                            \
    enum name : type name;                                                                                             \
    enum name : type
#define NS_OPTIONS(type, name)                                                                                         \
    type name;                                                                                                         \
    enum : type
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define IBOutlet __attribute__((iboutlet))
#define IBAction void) __attribute__((ibaction)

#define NSIntegerMax LONG_MAX
#define NSUIntegerMax ULONG_MAX

constexpr NSInteger NSNotFound = 0x7fffffffffffffffL;

typedef double NSTimeInterval;
typedef double CGFloat;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};

struct CGSize {
    CGFloat width;
    CGFloat height;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
};

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
typedef NSRect *NSRectPointer;

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
    return {x, y};
}

static inline NSSize NSMakeSize(CGFloat width, CGFloat height) {
    return {width, height};
}

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}

static inline CGFloat NSMinX(NSRect rect) {
    return rect.origin.x;
}

static inline CGFloat NSMinY(NSRect rect) {
    return rect.origin.y;
}

static inline CGFloat NSMaxX(NSRect rect) {
    return rect.origin.x + rect.size.width;
}

static inline CGFloat NSMaxY(NSRect rect) {
    return rect.origin.y + rect.size.height;
}

static inline CGFloat NSWidth(NSRect rect) {
    return rect.size.width;
}

static inline CGFloat NSHeight(NSRect rect) {
    return rect.size.height;
}

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length) {
    return {location, length};
}

static inline NSUInteger NSMaxRange(NSRange range) {
    return range.location + range.length;
}

PLATFORM_EXPORT const NSPoint NSZeroPoint;
PLATFORM_EXPORT const NSSize NSZeroSize;
PLATFORM_EXPORT const NSRect NSZeroRect;

NS_ASSUME_NONNULL_BEGIN

PLATFORM_EXPORT BOOL NSEqualPoints(NSPoint first, NSPoint second);
PLATFORM_EXPORT BOOL NSEqualSizes(NSSize first, NSSize second);
PLATFORM_EXPORT BOOL NSEqualRects(NSRect first, NSRect second);
PLATFORM_EXPORT BOOL NSPointInRect(NSPoint point, NSRect rect);
PLATFORM_EXPORT BOOL NSIntersectsRect(NSRect first, NSRect second);

PLATFORM_EXPORT void NSLog(NSString *format, ...) NS_FORMAT_FUNCTION(1, 2);
PLATFORM_EXPORT NSString *NSStringFromClass(Class which);
PLATFORM_EXPORT NSString *NSStringFromSelector(SEL operation);
PLATFORM_EXPORT Class _Nullable NSClassFromString(NSString *name);
PLATFORM_EXPORT SEL NSSelectorFromString(NSString *name);

@class NSCoder;

@protocol NSCopying
- (id)copyWithZone:(nullable NSZone *)zone;
@end

@protocol NSMutableCopying
- (id)mutableCopyWithZone:(nullable NSZone *)zone;
@end

@protocol NSCoding
- (void)encodeWithCoder:(NSCoder *)coder;
- (nullable instancetype)initWithCoder:(NSCoder *)coder;
@end

typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable *_Nullable itemsPtr;
    unsigned long *_Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)length;
@end

@interface NSObject (KeyValueCoding)
- (nullable id)valueForKey:(NSString *)key;
- (nullable id)valueForKeyPath:(NSString *)keyPath;
- (void)setValue:(nullable id)value forKey:(NSString *)key;
@end

NS_ASSUME_NONNULL_END

#pragma once
#include <objc/objc.h>
#include <os/availability.h>

/// The root of all classes, as far as the plug-in talks to it. It stands before the file of this name among the
/// platform's C headers, so that nothing but what is declared here can be sent.

typedef long NSInteger;
typedef unsigned long NSUInteger;

@class NSMethodSignature, NSString;

#pragma clang assume_nonnull begin

typedef struct _NSZone NSZone;

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property (readonly) NSUInteger hash;
@property (readonly) Class superclass;
- (Class)class;
- (instancetype)self;
- (id)performSelector:(SEL)operation;
- (id)performSelector:(SEL)operation withObject:(nullable id)object;
- (id)performSelector:(SEL)operation withObject:(nullable id)first withObject:(nullable id)second;
- (BOOL)isKindOfClass:(Class)expected;
- (BOOL)isMemberOfClass:(Class)expected;
- (BOOL)conformsToProtocol:(Protocol *)protocol;
- (BOOL)respondsToSelector:(SEL)operation;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
- (NSUInteger)retainCount;
@property (readonly, copy) NSString *description;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa OBJC_ISA_AVAILABILITY;
}
+ (void)load;
+ (void)initialize;
+ (instancetype)new;
+ (instancetype)alloc;
+ (Class)class;
+ (Class)superclass;
+ (BOOL)instancesRespondToSelector:(SEL)operation;
- (instancetype)init __attribute__((objc_designated_initializer));
- (void)dealloc;
- (id)copy;
- (id)mutableCopy;
- (NSMethodSignature *)methodSignatureForSelector:(SEL)operation;
- (IMP)methodForSelector:(SEL)operation;
- (void)doesNotRecognizeSelector:(SEL)operation;
@end

#pragma clang assume_nonnull end

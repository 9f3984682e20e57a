#import <AppKit/AppKit.h>

#include "GNUstep/Hook.hpp"
#include "GNUstep/lifetime/WeakUses.hpp"

// The notification centre and controls refer to observers and targets without holding them, and forget those that go.
// GNUstep keeps the address, and the next notification or click reaches whatever lies there.

namespace {

using Registration = void (*)(NSNotificationCenter *, SEL, id, SEL, NSString *, id);
using Removal = void (*)(NSNotificationCenter *, SEL, id);
using TargetSetter = void (*)(id, SEL, id);
using Deallocation = void (*)(id, SEL);

Registration originalAdd;
Removal originalRemove;
TargetSetter originalCellSetter;
TargetSetter originalMatrixSetter;
Deallocation originalDealloc;

/// Never destroyed: objects go until the process has ended.
vant::WeakUses &weakUses() {
    static auto *const uses = new vant::WeakUses;
    return *uses;
}

void addObserver(NSNotificationCenter *centre, SEL command, id observer, SEL operation, NSString *name, id object) {
    originalAdd(centre, command, observer, operation, name, object);
    if (centre == [NSNotificationCenter defaultCenter])
        weakUses().addObserver(observer);
}

void removeObserver(NSNotificationCenter *centre, SEL command, id observer) {
    originalRemove(centre, command, observer);
    if (centre == [NSNotificationCenter defaultCenter])
        weakUses().removeObserver(observer);
}

void setCellTarget(id cell, SEL command, id target) {
    weakUses().setTarget(cell, [cell target], target);
    originalCellSetter(cell, command, target);
}

void setMatrixTarget(id matrix, SEL command, id target) {
    weakUses().setTarget(matrix, [matrix target], target);
    originalMatrixSetter(matrix, command, target);
}

void forget(id object) {
    const vant::WeakUses::Uses uses = weakUses().take(object);
    if (uses.observes)
        originalRemove([NSNotificationCenter defaultCenter], @selector(removeObserver:), object);
    for (const void *control : uses.targeters)
        [const_cast<id>(static_cast<const id>(control)) setTarget:nil];
    // A control goes from its target's list.
    if ([object isKindOfClass:[NSActionCell class]] || [object isKindOfClass:[NSMatrix class]])
        weakUses().setTarget(object, [object target], nullptr);
}

void deallocate(id object, SEL command) {
    if (weakUses().mayKnow(object))
        forget(object);
    originalDealloc(object, command);
}

} // namespace

/// Sets the hooks.
@interface VantWeakUseHooks : NSObject
@end

@implementation VantWeakUseHooks

+ (void)load {
    @autoreleasepool {
        originalAdd =
            vant::hook([NSNotificationCenter class], @selector(addObserver:selector:name:object:), &addObserver);
        originalRemove = vant::hook([NSNotificationCenter class], @selector(removeObserver:), &removeObserver);
        originalCellSetter = vant::hook([NSActionCell class], @selector(setTarget:), &setCellTarget);
        originalMatrixSetter = vant::hook([NSMatrix class], @selector(setTarget:), &setMatrixTarget);
        originalDealloc = vant::hook([NSObject class], @selector(dealloc), &deallocate);
    }
}

@end

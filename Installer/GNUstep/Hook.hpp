#pragma once
#include <objc/runtime.h>

namespace vant {

/// Puts a function in the place of a class's method, for all its objects; gives the former one, which the function may
/// call. Null, with nothing changed, when the class has no such method, as another GNUstep may. For `+load`, when no
/// other thread runs yet.
template<class Function>
Function hook(Class owner, SEL name, Function replacement) {
    Method method = class_getInstanceMethod(owner, name);
    if (method == nullptr)
        return nullptr;
    return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

} // namespace vant

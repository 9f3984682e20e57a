#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstring>
#include <unistd.h>

#include "GNUstep/authorization/ToolPath.hpp"

namespace {

NSDictionary *currentEnvironment() {
    NSMutableDictionary *environment = [NSMutableDictionary dictionary];
    NSFileManager *files = [NSFileManager defaultManager];
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const char *const equals = std::strchr(*entry, '=');
        if (equals == nullptr)
            continue;
        NSString *name = [files stringWithFileSystemRepresentation:*entry
                                                            length:static_cast<NSUInteger>(equals - *entry)];
        NSString *value = [NSString stringWithUTF8String:equals + 1];
        if (name != nil && value != nil)
            [environment setObject:value forKey:name];
    }
    return environment;
}

// GNUstep gives a task the environment that the process was started with. On the platform a task without an environment
// of its own inherits the process's environment as it is at the launch.
NSDictionary *taskEnvironment(NSTask *task, SEL /*command*/) {
    NSDictionary *own = nil;
    object_getInstanceVariable(task, "_environment", reinterpret_cast<void **>(&own));
    return own != nil ? own : currentEnvironment();
}

} // namespace

/// Makes the tools that the bundle carries known to every child, from the moment that the bundle is loaded.
@interface VantToolPath : NSObject
@end

@implementation VantToolPath

+ (void)load {
    @autoreleasepool {
        vant::appendToPath(vant::carriedTools());
        class_replaceMethod([NSTask class], @selector(environment), reinterpret_cast<IMP>(taskEnvironment), "@@:");
    }
}

@end

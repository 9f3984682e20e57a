#include "GNUstep/authorization/ToolExit.hpp"

#include <dispatch/dispatch.h>
#import <VantLayer/PrivilegedToolExit.h>

#include <memory>
#include <sys/wait.h>

namespace vant {
namespace {

NSString *argumentText(const std::string &argument) {
    NSString *text = [NSString stringWithUTF8String:argument.c_str()];
    return text != nil ? text : [NSString stringWithCString:argument.c_str() encoding:NSISOLatin1StringEncoding];
}

NSDictionary *userInformation(const ToolExit &exit) {
    NSMutableArray *arguments = [NSMutableArray array];
    for (const std::string &argument : exit.arguments)
        [arguments addObject:argumentText(argument)];
    NSMutableDictionary *information = [NSMutableDictionary dictionary];
    [information setObject:argumentText(exit.path) forKey:VantPrivilegedToolPathKey];
    [information setObject:arguments forKey:VantPrivilegedToolArgumentsKey];
    [information setObject:[NSNumber numberWithInt:exit.process] forKey:VantPrivilegedToolProcessIdentifierKey];
    const int status = exit.waitStatus.value_or(0);
    if (exit.waitStatus && WIFEXITED(status))
        [information setObject:[NSNumber numberWithInt:WEXITSTATUS(status)] forKey:VantPrivilegedToolExitStatusKey];
    if (exit.waitStatus && WIFSIGNALED(status))
        [information setObject:[NSNumber numberWithInt:WTERMSIG(status)] forKey:VantPrivilegedToolSignalKey];
    return information;
}

void post(void *context) {
    const std::unique_ptr<ToolExit> exit(static_cast<ToolExit *>(context));
    [[NSNotificationCenter defaultCenter] postNotificationName:VantPrivilegedToolDidExitNotification
                                                        object:nil
                                                      userInfo:userInformation(*exit)];
}

} // namespace

void postToolExit(const ToolExit &exit) {
    dispatch_async_f(dispatch_get_main_queue(), new ToolExit(exit), post);
}

} // namespace vant

#import <AppKit/AppKit.h>
#include <objc/runtime.h>

#include "GNUstep/authorization/PrivilegedTool.hpp"
#include "GNUstep/authorization/ToolPath.hpp"

namespace {

using FileOpener = BOOL (*)(NSWorkspace *, SEL, NSString *);

FileOpener originalOpenFile;

BOOL isFolder(NSString *path) {
    BOOL folder = NO;
    return [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&folder] && folder &&
           ![[NSWorkspace sharedWorkspace] isFilePackageAtPath:path];
}

// GNUstep would hand a folder to its own file browser, which a Debian desktop does not have.
BOOL openFile(NSWorkspace *workspace, SEL command, NSString *path) {
    if (!isFolder(path))
        return originalOpenFile(workspace, command, path);
    const std::string program = vant::programInPath("xdg-open");
    std::string folder = [path fileSystemRepresentation];
    char *arguments[] = {folder.data(), nullptr};
    return !program.empty() && vant::launchTool(program, arguments, nullptr) == vant::ToolLaunch::started;
}

} // namespace

/// Lets the workspace open folders in the desktop's own file browser.
@interface VantWorkspaceFolders : NSObject
@end

@implementation VantWorkspaceFolders

+ (void)load {
    @autoreleasepool {
        Method method = class_getInstanceMethod([NSWorkspace class], @selector(openFile:));
        originalOpenFile =
            reinterpret_cast<FileOpener>(method_setImplementation(method, reinterpret_cast<IMP>(openFile)));
    }
}

@end

#include "GNUstep/authorization/PrivilegedTool.hpp"
#include "GNUstep/authorization/ToolPath.hpp"
#include "GNUstep/Hook.hpp"
#import <AppKit/AppKit.h>

namespace {

using FileOpener = BOOL (*)(NSWorkspace *, SEL, NSString *);
using AddressOpener = BOOL (*)(NSWorkspace *, SEL, NSURL *);

FileOpener originalOpenFile;
AddressOpener originalOpenURL;

/// Has the desktop open a folder or an address. NO, with a line in the log, when its opener cannot be started.
BOOL openByDesktop(std::string what) {
    const std::string program = vant::programInPath("xdg-open");
    char *arguments[] = {what.data(), nullptr};
    if (!program.empty() && vant::launchTool(program, arguments, nullptr) == vant::ToolLaunch::started)
        return YES;
    NSLog(@"%s cannot be opened: there is no xdg-open to be started in PATH", what.c_str());
    return NO;
}

BOOL isFolder(NSString *path) {
    BOOL folder = NO;
    return [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&folder] && folder &&
           ![[NSWorkspace sharedWorkspace] isFilePackageAtPath:path];
}

// GNUstep would hand a folder to its own file browser, which a Debian desktop does not have.
BOOL openFile(NSWorkspace *workspace, SEL command, NSString *path) {
    return isFolder(path) ? openByDesktop([path fileSystemRepresentation]) : originalOpenFile(workspace, command, path);
}

// GNUstep would look for a service of its own kind, and say in a panel that there is none.
BOOL openURL(NSWorkspace *workspace, SEL command, NSURL *address) {
    const bool isOfWeb = [@[ @"http", @"https" ] containsObject:[[address scheme] lowercaseString]];
    return isOfWeb ? openByDesktop([[address absoluteString] UTF8String])
                   : originalOpenURL(workspace, command, address);
}

} // namespace

/// Lets the workspace open folders and web pages by the desktop's own programs.
@interface VantWorkspaceOpening : NSObject
@end

@implementation VantWorkspaceOpening

+ (void)load {
    @autoreleasepool {
        originalOpenFile = vant::hook([NSWorkspace class], @selector(openFile:), &openFile);
        originalOpenURL = vant::hook([NSWorkspace class], @selector(openURL:), &openURL);
    }
}

@end

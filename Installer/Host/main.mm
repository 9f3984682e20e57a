#import "HostController.h"
#import "OwnFolder.h"
#import "ProcessSetUp.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv) {
    VantStartProcess({argv, argv + argc});
    @autoreleasepool {
        const HostSettings settings = VantHostSettings();
        if (VantEnterOwnFolder() == nil) {
            std::perror("VantHost: no folder of its own can be made");
            return EXIT_FAILURE;
        }
        NSApplication *application = VantMakeApplication();
        HostController *controller = [[HostController alloc] initWithSettings:settings];
        [application setDelegate:(id)controller];
        [application run];
        [controller release];
    }
    return EXIT_FAILURE;
}

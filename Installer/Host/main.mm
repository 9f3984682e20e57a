#import "HostController.h"
#import "OwnFolder.h"
#import "VantTheme.h"

#include "Languages.hpp"
#include <cstdio>
#include <cstdlib>

/// This host has one window and no menu: nothing else is to be put on the screen.
static void registerDefaults(void) {
    [[NSUserDefaults standardUserDefaults]
        registerDefaults:@{@"GSSuppressAppIcon" : @"YES", @"GSAppOwnsMiniwindow" : @"NO"}];
}

/// The platform reads the languages that tables are looked up in once, from the arguments, before any other code runs.
static void startProcess(const std::vector<std::string> &arguments, char **environment) {
    std::vector<char *> texts;
    texts.reserve(arguments.size());
    for (const std::string &argument : arguments)
        texts.push_back(const_cast<char *>(argument.c_str()));
    [NSProcessInfo initializeWithArguments:texts.data() count:static_cast<int>(texts.size()) environment:environment];
}

int main(int argc, char **argv) {
    const auto arguments = vant::host::withLanguageFolder({argv, argv + argc});
    startProcess(arguments, environ);
    @autoreleasepool {
        registerDefaults();
        const HostSettings settings = VantHostSettings();
        if (VantEnterOwnFolder() == nil) {
            std::perror("VantHost: no folder of its own can be made");
            return EXIT_FAILURE;
        }
        [VantTheme registerFonts];
        NSApplication *application = [NSApplication sharedApplication];
        [VantTheme use];
        HostController *controller = [[HostController alloc] initWithSettings:settings];
        [application setDelegate:(id)controller];
        [application run];
        [controller release];
    }
    return EXIT_FAILURE;
}

#import "ProcessSetUp.h"

#import "VantTheme.h"

#include "Languages.hpp"
#include <unistd.h>

/// The platform reads the languages that tables are looked up in once, from the arguments, before any other code runs.
void VantStartProcess(const std::vector<std::string> &arguments) {
    const auto whole = vant::host::withLanguageFolder(arguments, "-NSLanguages");
    std::vector<char *> texts;
    texts.reserve(whole.size());
    for (const std::string &argument : whole)
        texts.push_back(const_cast<char *>(argument.c_str()));
    [NSProcessInfo initializeWithArguments:texts.data() count:static_cast<int>(texts.size()) environment:environ];
}

/// This host has one window and no menu: nothing else is to be put on the screen. Its lists scroll at the right.
static void registerDefaults(void) {
    [[NSUserDefaults standardUserDefaults] registerDefaults:@{
        @"GSSuppressAppIcon" : @"YES",
        @"GSAppOwnsMiniwindow" : @"NO",
        @"NSScrollViewInterfaceStyle" : @"NSMacintoshInterfaceStyle"
    }];
}

NSApplication *VantMakeApplication(void) {
    registerDefaults();
    [VantTheme registerFonts];
    NSApplication *application = [NSApplication sharedApplication];
    [VantTheme use];
    return application;
}

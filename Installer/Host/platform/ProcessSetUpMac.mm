#import "ProcessSetUp.h"

#include "Languages.hpp"
#include <algorithm>
#include <cstdio>
#include <unistd.h>

static const char *const languagesOption = "-AppleLanguages";

/// The platform has read the languages from the arguments before `main` runs, so the program is started again with
/// them.
void VantStartProcess(const std::vector<std::string> &arguments) {
    if (std::find(arguments.begin(), arguments.end(), languagesOption) != arguments.end())
        return;
    const auto whole = vant::host::withLanguageFolder(arguments, languagesOption);
    if (whole.size() == arguments.size())
        return;
    std::vector<char *> texts;
    texts.reserve(whole.size() + 1);
    for (const std::string &argument : whole)
        texts.push_back(const_cast<char *>(argument.c_str()));
    texts.push_back(nullptr);
    execv(texts.front(), texts.data());
    std::perror("VantHost: the language cannot be set");
}

NSApplication *VantMakeApplication(void) {
    NSApplication *application = [NSApplication sharedApplication];
    // Also when it is started by its path, outside the Finder.
    [application setActivationPolicy:NSApplicationActivationPolicyRegular];
    return application;
}

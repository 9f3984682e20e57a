#pragma once
#import <AppKit/AppKit.h>

#include <string>
#include <vector>

/// Makes the tables of the language that "-Language CODE" names those of this process. Before anything else.
void VantStartProcess(const std::vector<std::string> &arguments);

/// The application object, with the look that the host has on this platform. Main thread.
NSApplication *VantMakeApplication(void);

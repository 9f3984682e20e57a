#pragma once
#import <AppKit/AppKit.h>

#include <string>

/// How many rows the pane's table lists, how many of them have their bar in sight, and how many of those turn a
/// spinner: "7 listed, 4 in sight, 1 turning". Main thread.
std::string VantRowCount(id pane);

#pragma once

/// AppKit, as far as the plug-in and the host use it: a call that is not declared in these headers does not compile.
/// They are written from the platform's public documentation; cmake/macos/README.md says how to add to them.

#import <AppKit/Application.h>
#import <AppKit/Cells.h>
#import <AppKit/Controls.h>
#import <AppKit/Drawing.h>
#import <AppKit/Table.h>
#import <AppKit/Views.h>

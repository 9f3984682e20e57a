#pragma once

/// Foundation, as far as the plug-in and the host use it: a call that is not declared in these headers does not
/// compile. They are written from the platform's public documentation; cmake/macos/README.md says how to add to them.

#import <Foundation/Basics.h>
#import <Foundation/Collections.h>
#import <Foundation/Files.h>
#import <Foundation/Loading.h>
#import <Foundation/Running.h>
#import <Foundation/Strings.h>
#import <Foundation/Values.h>

#pragma once
#import <Foundation/Foundation.h>

#import <AppKit/AppKit.h>

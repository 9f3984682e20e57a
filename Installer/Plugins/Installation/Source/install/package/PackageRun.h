#pragma once
#import <Foundation/Foundation.h>

#include "install/chain/InstallFlow.hpp"

/// One package at work: what its record says, for the length of one installer thread.
struct VantPackageRun {
    vant::InstallFlow flow;
    NSString *path;          ///< the package's full path; empty when the record has none
    NSString *fileName;      ///< its last component, under which the outcome is kept
    NSString *componentName; ///< the component's name or kind; empty when the record has none
};

/// Reads a record of either flow. A value that is no string counts as absent.
VantPackageRun VantPackageRunOfRecord(id record, vant::InstallFlow flow);

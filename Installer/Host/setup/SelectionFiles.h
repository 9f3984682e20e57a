#pragma once
#import "HostSettings.h"

/// Leaves the user's choices where the pane looks for them, below "Vantrel" in the temporary folder: the settings file,
/// the selection files with absolute locations, and the slide folders. What an earlier run left there is replaced.
/// Nothing is left, and the reason is given, when an address to be downloaded from, or the name of a package or of a
/// colour profile, holds what a shell would read; else nil.
NSString *VantWriteSelectionFiles(const HostSettings &settings);

#pragma once
#import <Foundation/Foundation.h>

/// Why a selection is not installed: the first text with a character that a shell would read, in words for the user.
/// Nil when there is none. A file that cannot be read refuses nothing.

/// By the addresses of the web selection in this file. An archive is expanded by a shell's command line that holds its
/// name, which comes from its address.
NSString *VantRefusedAddress(NSString *file);

/// By the file names of the packages of the media selection, or of the user settings, in this file.
NSString *VantRefusedPackage(NSString *file);

/// By the file names of the colour profiles on the media, whose archives a shell's command line names too.
NSString *VantRefusedProfile(NSString *media);

#pragma once
#import <Foundation/Foundation.h>

/// Makes an empty folder in the temporary folder, open to this user alone, and makes it the process's current folder:
/// what the pane removes by relative paths can then be nothing of the user's. Gives its path, nil when it cannot be
/// made. Call it before there are other threads.
NSString *VantEnterOwnFolder(void);

/// Removes the folder again when nothing is in it.
void VantLeaveOwnFolder(void);

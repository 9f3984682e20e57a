#pragma once
#import <Foundation/Foundation.h>

/// Where the pane puts what it downloads.
NSString *VantDownloadFolder(void);

/// Removes it with all archives and packages in it.
void VantRemoveDownloads(void);

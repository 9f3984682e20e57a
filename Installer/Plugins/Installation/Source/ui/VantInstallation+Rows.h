#import "shell/VantInstallation.h"
#include "ui/TableRows.hpp"

@class VantComponentTable;

/// What the component table asks of the pane, which tells it how the run goes (`RunEvents`). The rows are those of the
/// media selection, or of the web selection when that one is empty. Thread: main.
@interface VantInstallation (Rows)
/// The `BDObject`s of the table's rows, and the selection entries that they stand for.
- (NSArray *)tableRows;
- (NSArray *)tableEntries;
/// Per row, the key that its download and its packages share: an entry's location on the media, the folder name of its
/// archive from the web.
- (std::vector<std::string>)tableKeys;
/// Per row, the key of its kind, by which packages of the media stand in for an archive that brings none; empty for the
/// rows of the media.
- (std::vector<std::string>)tableKinds;
/// Whether the list of packages holds one of the row with that key.
- (BOOL)isAnyPackageOfRow:(const std::string &)key;
/// Whether nothing will be installed: the rights were refused, or the downloads were set aside.
- (BOOL)isRunGivenUp;
/// The package that the run has just finished with, and the one that follows it unless that was the last. Asked
/// while the one or the other is announced. Thread: installer.
- (vant::PackageEnd)endedPackageWithNext:(BOOL)goesOn;

/// From now on the table is told what happens, until the pane is destroyed.
- (void)joinComponentTable:(VantComponentTable *)table;
/// From now on nothing is told.
- (void)leaveComponentTable;
@end

#import "selection/VantInstallation+SelectedSoftware.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/PropertyList.h"
#import "selection/ComponentRecord.h"
#include "selection/SelectedSoftware.hpp"
#import "selection/SelectionEntry.h"

#include <vector>

using Texts = std::vector<std::optional<std::string>>;

static void appendKinds(Texts &kinds, NSArray *selection) {
    for (id entry in selection)
        kinds.push_back(vant::optionalUTF8(VantEntryText(entry, VantTypeKey)));
}

@implementation VantInstallation (SelectedSoftware)

- (NSMutableArray *)fetchSelectedSoftwareList {
    NSArray *mediaSelection = selectedarrXML1;
    // The web flow never reads the media selection itself, and the file may have changed since it was last looked at.
    if ([mediaSelection count] == 0)
        mediaSelection = VantArrayFromFile(VantTemporaryPath(VantMediaSelectionFile));
    Texts kinds;
    appendKinds(kinds, mediaSelection);
    appendKinds(kinds, selectedarrXML);
    Texts listed;
    for (id kind in mSelectedSoftwareList)
        listed.push_back(vant::optionalUTF8(kind));
    for (const std::string_view kind : vant::newlySelectedSoftware(kinds, listed))
        [mSelectedSoftwareList addObject:vant::nsString(kind)];
    return mSelectedSoftwareList;
}

@end

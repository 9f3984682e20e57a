#import "ui/VantInstallation+Rows.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#include "base/Paths.hpp"
#import "base/PropertyList.h"
#import "base/Retained.h"
#include "base/SharedValue.hpp"
#import "download/VantDownload.h"
#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/status/VantInstallation+RunEvents.h"
#include "install/tasks/Archives.hpp"
#import "selection/ComponentRecord.h"
#import "selection/SelectionEntry.h"
#import "selection/VantInstallation+PackageLists.h"
#import "ui/VantComponentTable.h"

#include <algorithm>

static std::string keyOfAddress(NSString *address) {
    const std::string text = vant::utf8(address);
    return std::string(vant::extractFolderName(vant::destinationName(text)));
}

@implementation VantInstallation (Rows)

- (BOOL)showsMediaRows {
    return [objects1 count] > 0;
}

- (NSArray *)tableRows {
    return [self showsMediaRows] ? objects1 : objects;
}

- (NSArray *)tableEntries {
    return [self showsMediaRows] ? selectedarrXML1 : selectedarrXML;
}

- (std::vector<std::string>)tableKeys {
    std::vector<std::string> keys([[self tableRows] count]);
    NSArray *entries = [self tableEntries];
    for (NSUInteger row = 0; row < keys.size() && row < [entries count]; ++row) {
        NSString *location = VantEntryText([entries objectAtIndex:row], VantLocationKey);
        keys[row] = [self showsMediaRows] ? vant::utf8(location) : keyOfAddress(location);
    }
    return keys;
}

- (std::vector<std::string>)tableKinds {
    std::vector<std::string> kinds;
    if ([self showsMediaRows])
        return kinds;
    for (id entry in [self tableEntries])
        kinds.push_back(vant::keyOfKind(vant::utf8(VantEntryText(entry, VantTypeKey))));
    return kinds;
}

- (BOOL)isRunGivenUp {
    return mAuthCancelledOrError || mNonFlatInstaller;
}

- (vant::Flow)flowOfRows {
    return [self showsMediaRows] ? vant::Flow::Media : vant::Flow::Web;
}

- (NSString *)pathOfPackage:(NSUInteger)position {
    id record = [self packageInFlow:[self flowOfRows] atIndex:position];
    return VantStringForKey(record, [self showsMediaRows] ? VantLocationKey : VantInstallerPathKey);
}

- (std::string)keyOfPackage:(NSUInteger)position {
    std::string path = vant::utf8([self pathOfPackage:position]);
    if ([self showsMediaRows])
        return path;
    const std::string_view archive = vant::nameBelow(path, vant::utf8(VantTemporaryPath(VantDownloadFolder)));
    if (!archive.empty())
        return std::string(archive);
    id record = [self packageInFlow:vant::Flow::Web atIndex:position];
    return vant::keyOfKind(vant::utf8(VantStringForKey(record, VantComponentNameKey)));
}

- (std::vector<std::string>)keysOfPackages {
    std::vector<std::string> packages([self packageCountInFlow:[self flowOfRows]]);
    for (NSUInteger position = 0; position < packages.size(); ++position)
        packages[position] = [self keyOfPackage:position];
    return packages;
}

- (BOOL)isAnyPackageOfRow:(const std::string &)key {
    const auto packages = [self keysOfPackages];
    return std::find(packages.begin(), packages.end(), key) != packages.end();
}

- (vant::PackageEnd)endedPackageWithNext:(BOOL)goesOn {
    const NSUInteger count = [self packageCountInFlow:[self flowOfRows]];
    const auto position = static_cast<NSUInteger>(vant::sharedValue(cdInstallIndex));
    // With the announcement of a next package the run has already moved on to it.
    const NSUInteger ended = goesOn ? position - 1 : position;
    if (ended >= count)
        return {};
    id outcome = [mInstalledPackageDict objectForKey:[[self pathOfPackage:ended] lastPathComponent]];
    vant::PackageEnd end = {.key = [self keyOfPackage:ended],
                            .installed = ![outcome isEqual:VantOutcomeWord(vant::InstallOutcome::Failed)],
                            .next = {}};
    if (goesOn && position < count)
        end.next = [self keyOfPackage:position];
    return end;
}

- (void)joinComponentTable:(VantComponentTable *)table {
    vant::hold(componentTable, table);
}

- (void)leaveComponentTable {
    [componentTable setPane:nil];
    vant::hold(componentTable, static_cast<VantComponentTable *>(nil));
}

@end

@implementation VantInstallation (RunEvents)

- (void)runWillInstall {
    const auto first = static_cast<std::size_t>(vant::sharedValue(cdInstallIndex));
    [componentTable change:[packages = [self keysOfPackages], first](vant::TableRows &rows) {
        rows.installationStarted(packages, first);
    }];
}

- (void)runHasStopped {
    [componentTable change:[](vant::TableRows &rows) { rows.runEnded(); }];
}

- (void)runHasLostDownload:(id)download {
    [componentTable change:[key = keyOfAddress([VantDownload addressOfDownload:download])](vant::TableRows &rows) {
        rows.downloadFailed(key);
    }];
}

@end

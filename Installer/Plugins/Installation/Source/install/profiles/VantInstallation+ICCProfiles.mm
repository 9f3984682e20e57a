#import "install/profiles/VantInstallation+ICCProfiles.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "install/tasks/VantInstallation+ShellTasks.h"

#include "install/profiles/ColourProfiles.hpp"

static NSString *const targetFolder = @"~/Library/Preferences/Kelscan/Quorvel Universal Scan Driver/Profiles/";

static BOOL isFolder(NSString *path) {
    BOOL folder = NO;
    return [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&folder] && folder;
}

static BOOL ensureFolder(NSString *path) {
    return isFolder(path) || [[NSFileManager defaultManager] createDirectoryAtPath:path
                                                       withIntermediateDirectories:YES
                                                                        attributes:nil
                                                                             error:nullptr];
}

/// Copies an item that is not there yet. The error of a failure is stored; a success leaves the slot as it is, so that
/// it keeps the last failure of a whole walk.
static void copyItem(NSString *source, NSString *destination, NSError **slot) {
    NSError *error = nil;
    if (![[NSFileManager defaultManager] copyItemAtPath:source toPath:destination error:&error])
        *slot = error;
}

static vant::ProfileFile kindOf(NSString *name) {
    return vant::profileFileOfExtension(vant::utf8([name pathExtension]));
}

@implementation VantInstallation (ICCProfiles)

- (void)installICCProfilesIfRequired:(NSString *)packageName {
    if (!vant::needsColourProfiles(vant::utf8(packageName)))
        return;
    NSString *root = VantMediaRoot();
    const vant::MediaFolders present{
        .installFiles = isFolder([root stringByAppendingString:vant::nsString(vant::installFilesFolder)]) == YES,
        .macData = isFolder([root stringByAppendingString:vant::nsString(vant::macDataFolder)]) == YES,
    };
    const std::string source = vant::profileSourceFolder(vant::utf8(root), present);
    [self copyIccProfilesToTmpandInstall:vant::nsString(source)];
}

- (void)copyIccProfilesToTmpandInstall:(NSString *)sourceFolder {
    NSString *staging = VantTemporaryPath(VantProfilesFolder);
    if (!ensureFolder(staging)) {
        [self trace:@"ICC ASSERT : Creating Vantrel/Profiles Failed"];
        return;
    }
    NSString *archive = [self stageProfilesOf:sourceFolder in:staging];
    if (archive != nil)
        [self unzip:archive ExtractPath:staging];
    NSString *target = [targetFolder stringByExpandingTildeInPath];
    if (!ensureFolder(target)) {
        // The staging folder stays behind: the next matching package takes it up again.
        [self trace:@"ERROR!!! Creating Kelscan/Quorvel Universal Scan Driver"];
        return;
    }
    [self installStagedProfilesOf:staging into:target];
    [self removeStagingFolder:staging];
}

/// Returns the archive that was staged last, nil without one.
- (NSString *)stageProfilesOf:(NSString *)sourceFolder in:(NSString *)staging {
    NSString *archive = nil;
    NSError *failure = nil;
    for (NSString *name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:sourceFolder error:nullptr]) {
        NSString *staged = [NSString stringWithFormat:@"%@/%@", staging, name];
        const vant::ProfileFile kind = kindOf(name);
        if (kind == vant::ProfileFile::Archive)
            archive = staged;
        if (kind != vant::ProfileFile::Other) {
            [self trace:@"ICC FILE===>: %@", name];
            copyItem([sourceFolder stringByAppendingString:name], staged, &failure);
        }
        // One failure is told again under every later name: support reads from it how far the staging was whole.
        if (failure != nil)
            [self trace:@"ERROR!!! copying icc profiles file [%@] Failed with error [%@]", name,
                        [failure localizedDescription]];
    }
    return archive;
}

- (void)installStagedProfilesOf:(NSString *)staging into:(NSString *)target {
    NSFileManager *files = [NSFileManager defaultManager];
    NSError *failure = nil;
    for (NSString *relativePath in [files enumeratorAtPath:staging]) {
        if (kindOf(relativePath) != vant::ProfileFile::Profile)
            continue;
        const vant::ProfileTarget at = vant::profileTarget(vant::utf8(target), vant::utf8(relativePath));
        NSString *tested = vant::nsString(at.tested);
        if (![files fileExistsAtPath:tested]) {
            NSString *staged = [NSString stringWithFormat:@"%@/%@", staging, relativePath];
            [self trace:@"Copy from [%@] To [%@]", staged, tested];
            copyItem(staged, vant::nsString(at.destination), &failure);
        }
        if (failure != nil)
            [self trace:@"ERROR!!! Copy to Kelscan failed"];
    }
}

- (void)removeStagingFolder:(NSString *)staging {
    NSFileManager *files = [NSFileManager defaultManager];
    if (![files fileExistsAtPath:staging]) {
        [self trace:@"ICC Alert:No files in Vantrel/Profiles"];
        return;
    }
    // The paths are relative, so they name items of the process's current folder, not of the staging folder. That is
    // kept as it stands; the staging folder is emptied by its own removal below.
    for (NSString *relativePath in [files enumeratorAtPath:staging]) {
        if (![relativePath isEqualToString:@"."] && ![relativePath isEqualToString:@".."])
            [files removeItemAtPath:relativePath error:nullptr];
    }
    [files removeItemAtPath:staging error:nullptr];
}

@end

#import "install/profiles/VantInstallation+ICCProfiles.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#include "base/Paths.hpp"
#import "install/tasks/VantInstallation+ShellTasks.h"

#include "install/profiles/ColourProfiles.hpp"

#include <sys/stat.h>

static NSString *const targetFolder = @"~/Library/Preferences/Kelscan/Quorvel Universal Scan Driver/Profiles/";

static BOOL isFolder(NSString *path) {
    BOOL folder = NO;
    return [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&folder] && folder;
}

/// Whether something other than a file lies there: a folder, or a pipe, whose reading would never end.
static bool isNoFile(NSString *path) {
    struct stat found {};
    return ::stat([path fileSystemRepresentation], &found) == 0 && !S_ISREG(found.st_mode);
}

/// Copies an item that is not there yet. The error of a failure is stored; a success leaves the slot as it is, so that
/// it keeps the last failure of a whole walk.
static void copyItem(NSString *source, NSString *destination, NSError **slot) {
    NSError *error = nil;
    if (![[NSFileManager defaultManager] copyItemAtPath:source toPath:destination error:&error])
        *slot = error;
}

static vant::ProfileFile kindOfItem(NSString *name, NSString *path) {
    const vant::ProfileFile kind = vant::profileFileOfExtension(vant::pathExtension(vant::utf8(name)));
    return kind != vant::ProfileFile::Other && isNoFile(path) ? vant::ProfileFile::Other : kind;
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
    if (!VantEnsurePrivateFolder(staging)) {
        [self trace:@"ICC ASSERT : Creating Vantrel/Profiles Failed"];
        return;
    }
    NSString *archive = [self stageProfilesOf:sourceFolder in:staging];
    if (archive != nil)
        [self unzip:archive ExtractPath:staging];
    // With the slash at its end, which expanding the tilde takes away: the paths in the log have it twice.
    NSString *target = [[targetFolder stringByExpandingTildeInPath] stringByAppendingString:@"/"];
    if (!VantEnsureFolder(target)) {
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
        NSString *source = [sourceFolder stringByAppendingString:name];
        const vant::ProfileFile kind = kindOfItem(name, source);
        if (kind == vant::ProfileFile::Archive)
            archive = staged;
        if (kind != vant::ProfileFile::Other) {
            [self trace:@"ICC FILE===>: %@", name];
            copyItem(source, staged, &failure);
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
        NSString *staged = [NSString stringWithFormat:@"%@/%@", staging, relativePath];
        if (kindOfItem(relativePath, staged) != vant::ProfileFile::Profile)
            continue;
        const vant::ProfileTarget at = vant::profileTarget(vant::utf8(target), vant::utf8(relativePath));
        NSString *tested = vant::nsString(at.tested);
        if (![files fileExistsAtPath:tested]) {
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

#import "install/chain/VantInstallation+MediaFlow.h"

#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/status/VantInstallation+StatusLine.h"
#import "selection/VantInstallation+InstallOrder.h"

@implementation VantInstallation (MediaFlow)

- (void)InstallCDComponents:(id)ignored {
    (void)ignored;
    if ([mInstallCompArrayForCDUpdate count] == 0)
        return;
    [self showInstallingLook];
    [VantInstallation sortMutableListOfComponentsToInstallAsPerRequiredOrder:mInstallCompArrayForCDUpdate
                                                               foInstallType:@"CD"];
    [self trace:@"Installing start for CD Data ===>:[%@]", mInstallCompArrayForCDUpdate];
    // The position is the process's own: after an earlier flow the list starts where that one stopped.
    id first = [mInstallCompArrayForCDUpdate objectAtIndex:static_cast<NSUInteger>(cdInstallIndex)];
    [NSThread detachNewThreadSelector:@selector(installCDComponentAtPath:) toTarget:self withObject:first];
}

@end

#import "VantInstallation+MediaFlow.h"

#import "VantInstallation+InstallOrder.h"
#import "VantInstallation+PackageInstaller.h"
#import "VantInstallation+StatusLine.h"

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

#import "ui/VantInstallation+PaneSetup.h"

#import "base/Locations.h"
#import "base/PropertyList.h"
#import "base/Resources.h"
#import "base/Retained.h"
#import "install/status/VantInstallation+StatusLine.h"
#include "selection/Flow.hpp"
#import "shell/VantInstallation+HostLink.h"
#import "slides/VantInstallation+SlideContent.h"
#import "slides/VantInstallation+SlideRotation.h"
#import "ui/VantButton.h"
#import "ui/VantInstallation+Views.h"

#include <cstdio>

static const NSTimeInterval slidePeriod = 15.0;
static const NSTimeInterval selectionPollPeriod = 5.0;

static void removeFile(NSString *relativePath) {
    [[NSFileManager defaultManager] removeItemAtPath:VantTemporaryPath(relativePath) error:nullptr];
}

static void removeFileIfPresent(NSString *relativePath) {
    if ([[NSFileManager defaultManager] fileExistsAtPath:VantTemporaryPath(relativePath)])
        removeFile(relativePath);
}

@implementation VantInstallation (PaneSetup)

- (BOOL)setUpPane {
    [self showFirstSlide];
    [self showVendorInLink];
    // Twice on purpose: the second removal finds nothing, and is part of what set-up is known to do.
    removeFile(VantKeptModelInfoFile);
    removeFile(VantKeptModelInfoFile);
    [self createLists];
    removeFileIfPresent(VantWebInstallErrorFile);
    removeFileIfPresent(VantDownloadFolder);
    if (selectedarrXML == nil || selectedarrXML1 == nil)
        return YES;
    [self enableHostButton2:NO];
    [self enableHostButton1:NO];
    [self startView];
    return YES;
}

- (void)showFirstSlide {
    [imageView setImage:[self firstSlideImage]];
    [backButton setEnabled:NO];
    [backButton setImage:[self resourceImageNamed:@"Back_Disable.png"]];
    [productTitle setStringValue:[self firstSlideTitle] ?: @""];
    [productDesc setStringValue:[self firstSlideDescription] ?: @""];
    prevSelection = 0;
    vant::hold(timer, [NSTimer scheduledTimerWithTimeInterval:slidePeriod
                                                       target:self
                                                     selector:@selector(changeImageTrigger)
                                                     userInfo:nil
                                                      repeats:YES]);
}

- (void)showVendorInLink {
    for (NSView *view in [mView subviews])
        if ([view isKindOfClass:[VantButton class]])
            [(VantButton *)view setWords:[self vendorText:VantResourceString(@"SupportLink")]];
}

- (void)createLists {
    vant::hold(objects, [NSMutableArray array]);
    vant::hold(selectedarrXML, [NSMutableArray array]);
    vant::hold(objects1, [NSMutableArray array]);
    vant::hold(selectedarrXML1, [NSMutableArray array]);
    vant::hold(mSelectedSoftwareList, [NSMutableArray array]);
    isParseXML = YES;
    isParseXML1 = YES;
    scannerCount = 0;
}

- (void)startView {
    const bool webFlowAllowed = vant::isWebFlowAllowed(mSmartUpdate == 1, mWebError == 1);
    if (webFlowAllowed)
        [self waitForWebSelection];
    if (vant::chooseFlow(webFlowAllowed, [selectedarrXML count]) == vant::Flow::Web) {
        [self showNormalView];
        return;
    }
    vant::hold(selectedarrXML1, VantArrayFromFile(VantTemporaryPath(VantMediaSelectionFile)));
    [self showNormalViewforCDInstallation];
}

// Without a time limit, on the main thread: the host is still writing the file, and there is nothing to show without
// it.
- (void)waitForWebSelection {
    [self showConnectingLook];
    NSString *path = VantTemporaryPath(VantWebSelectionFile);
    while (![[NSFileManager defaultManager] fileExistsAtPath:path]) {
        std::fputs("FILE NOT FOUND !!!\n", stderr);
        [NSThread sleepForTimeInterval:selectionPollPeriod];
    }
    vant::hold(selectedarrXML, VantArrayFromFile(path));
}

@end

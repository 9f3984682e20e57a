#import "shell/VantInstallation.h"

#import "base/Locations.h"
#import "base/Resources.h"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/status/VantInstallation+StatusLine.h"
#import "selection/VantInstallation+SelectedSoftware.h"
#import "shell/SettingsKeys.h"
#import "shell/VantInstallation+HostLink.h"
#import "shell/VantInstallation+UserSettings.h"
#import "shell/VantInstallationLogger.h"
#import "ui/VantInstallation+PaneSetup.h"
#import "ui/VantInstallation+Rows.h"

int cdDownloadIndex = 0;
int cdInstallIndex = 0;

static NSString *const stringTable = @"Localizable-Inst";

@implementation VantInstallation

- (id)initWithModel:(NSDictionary *)model {
    // The observer comes before everything else, the root class's initialiser included: hosts rely on being reachable
    // from the moment the nib loads.
    mObserver = [model objectForKey:VantModelObserverKey];
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    if (![NSBundle loadNibNamed:@"VTInstallation" owner:self]) {
#pragma clang diagnostic pop
        [self release];
        return nil;
    }
    if (model == nil)
        // Tracing is still off here, because the settings have not been read: the order is kept.
        [self trace:@"***ERROR*** Plugin Error model info NIL"];
    else
        [self startWithModel:model];
    // Without a media list, as in the web flow, the operation does nothing.
    [self performSelector:@selector(InstallCDComponents:)
               withObject:mInstallCompArrayForCDUpdate
               afterDelay:VantInstallationDelay];
    return self;
}

- (void)startWithModel:(NSDictionary *)model {
    mInstallationInProgressStatus = NO;
    mUserOptionsFilePath5 = [VantTemporaryPath(VantUserSettingsFile) retain];
    mNonFlatInstaller = NO;
    uploadToRDSDone = YES;
    mAuthCancelledOrError = NO;
    modelInfo = [model retain];
    NSDictionary *settings = [self loadUserSettingsFile];
    mInstalledPackageDict = [[NSMutableDictionary alloc] init];
    mInstallCompArrayForSmartUpdate = [[NSMutableArray alloc] init];
    mInstallCompArrayForCDUpdate = [[NSMutableArray alloc] init];
    [self showWaitingLook];
    [self applySwitchesOfSettings:settings];
    [self trace:@"%@", model];
    if (mView != nil && ![self setUpPane])
        [self trace:@"***ERROR*** Setup pane fail"];
}

// Nothing but the model record and the table is given up: destruction is no way to stop a running installation, whose
// threads, timer and notification registrations go on.
- (void)dealloc {
    [self leaveComponentTable];
    [modelInfo release];
    [super dealloc];
}

- (void)awakeFromNib {
}

- (NSView *)contentView {
    return mView;
}

- (NSString *)windowTitle {
    return [[NSBundle mainBundle] localizedStringForKey:@"WebInstallTitle" value:nil table:stringTable];
}

- (NSArray *)model {
    if (VantInstallationDebugFlag)
        [self trace:@"model:[%@]", [self fetchSelectedSoftwareList]];
    return [NSArray arrayWithArray:[self fetchSelectedSoftwareList]];
}

- (NSString *)isPluginValid {
    return mAuthCancelledOrError ? @"NO" : @"YES";
}

- (NSString *)performButton1Action {
    return @"0";
}

- (NSString *)performButton2Action {
    return @"0";
}

- (NSString *)performButton3Action {
    return mAuthCancelledOrError ? @"3" : @"0";
}

- (BOOL)needToShowQuitSheet {
    return YES;
}

- (id)langParser {
    return [self hostLanguageParser];
}

- (NSString *)localizedStringForKey:(NSString *)key {
    return VantResourceString(key);
}

- (void)setIsButton1Enabled:(BOOL)enabled {
    (void)enabled;
}

- (void)setIsButton2Enabled:(BOOL)enabled {
    (void)enabled;
}

- (void)setIsButton3Enabled:(BOOL)enabled {
    (void)enabled;
}

- (void)setIsButton1Hidden:(BOOL)hidden {
    (void)hidden;
}

- (void)setIsButton2Hidden:(BOOL)hidden {
    (void)hidden;
}

- (void)setIsButton3Hidden:(BOOL)hidden {
    (void)hidden;
}

- (void)trace:(NSString *)format, ... {
    if (!VantInstallationDebugFlag)
        return;
    va_list arguments;
    va_start(arguments, format);
    NSString *message = [[NSString alloc] initWithFormat:format arguments:arguments];
    va_end(arguments);
    [[VantInstallationLogger progressLogger] logVantTrace:message flush:YES];
    [message release];
}

@end

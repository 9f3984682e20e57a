#import "shell/VantInstallation.h"

#import "base/Locations.h"
#import "install/chain/VantInstallation+MediaFlow.h"
#import "selection/VantInstallation+SelectedSoftware.h"
#import "shell/SettingsKeys.h"
#import "shell/VantInstallation+UserSettings.h"
#import "shell/VantInstallationLogger.h"
#import "ui/VantInstallation+PaneSetup.h"

int cdDownloadIndex = 0;
int cdInstallIndex = 0;

static NSString *const stringTable = @"Localizable-Inst";
static const NSTimeInterval installationDelay = 3.0;

/// Whether the object takes what the pane tells an observer. Anything else in its place counts as no observer at all.
static BOOL isObserver(id object) {
    return [object respondsToSelector:@selector(setIsButton1Enabled:)] &&
           [object respondsToSelector:@selector(setIsButton2Enabled:)] &&
           [object respondsToSelector:@selector(setIsButton3Enabled:)] &&
           [object respondsToSelector:@selector(setIsButton3Hidden:)];
}

@implementation VantInstallation

- (id)initWithModel:(NSDictionary *)model {
    // The observer comes before everything else, the root class's initialiser included: hosts rely on being reachable
    // from the moment the interface description loads.
    id observer = [model objectForKey:VantModelObserverKey];
    mObserver = isObserver(observer) ? observer : nil;
    if (![NSBundle loadNibNamed:@"VTInstallation" owner:self]) {
        [self release];
        return nil;
    }
    if (model == nil)
        // Tracing is still off here, because the settings have not been read: the order is kept.
        [self trace:@"***ERROR*** Plugin Error model info NIL"];
    else
        [self startWithModel:model];
    [self performSelector:@selector(InstallCDComponents:)
               withObject:mInstallCompArrayForCDUpdate
               afterDelay:installationDelay];
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
    [self prepareProgressBars];
    [self applySwitchesOfSettings:settings];
    [self trace:@"%@", model];
    if (mView != nil && ![self setUpPane])
        [self trace:@"***ERROR*** Setup pane fail"];
}

- (void)prepareProgressBars {
    [mVTPackageDownloadProg setStyle:NSProgressIndicatorBarStyle];
    [mVTPackageDownloadProg setIndeterminate:NO];
    [mVTPackageDownloadProg setControlSize:NSRegularControlSize];
    [mVTPackageDownloadProg setMinValue:0.0];
    [mVTPackageDownloadProg setMaxValue:100.0];
    [mVTPackageDownloadProg startAnimation:self];
    [mVTPackageDownloadProg setHidden:YES];
    [mVTPackageInstallationProg setHidden:YES];
    [mVTPackageInstallationProgDummy setHidden:NO];
}

// Nothing but the model record is given up: destruction is no way to stop a running installation, whose threads,
// timer and notification registrations go on.
- (void)dealloc {
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
    // By name, so that an observer of any class will do.
    return [mObserver respondsToSelector:@selector(getLangParser)]
               ? [mObserver performSelector:@selector(getLangParser)]
               : nil;
}

- (NSString *)hostStringForKey:(NSString *)key {
    // Hosts' parsers take a second, empty string, which they ignore; only the key selects the text.
    id parser = [self langParser];
    if (![parser respondsToSelector:@selector(getStringByKey:)])
        return nil;
    id text = [parser performSelector:@selector(getStringByKey:) withObject:key withObject:@""];
    return [text isKindOfClass:[NSString class]] ? text : nil;
}

- (NSString *)localizedStringForKey:(NSString *)key {
    return [[NSBundle bundleForClass:[VantInstallation class]] localizedStringForKey:key value:nil table:stringTable];
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

#import <Cocoa/Cocoa.h>
#import <Security/Authorization.h>

@class BDObject;
@class VantComponentTable;

/// What the pane tells and asks the host's observer, the "Model Observer" of the model record. The host's class is its
/// own; the pane only sends these, and leaves out what an observer does not know.
///
/// Threads: while the pane is created, everything arrives on the main thread. The two messages of the end arrive on the
/// thread of the last package: `setIsButton2Enabled:` YES and `continueToNextPlugin`. A host that touches its views
/// there has to go to its main thread first.
@protocol VantObserver <NSObject>
/// Thread: main.
- (void)setIsButton1Enabled:(BOOL)enabled;
/// NO on the main thread, while the pane is created; YES when all is done, on the thread of the last package, or on the
/// main thread when nothing can be installed unattended.
- (void)setIsButton2Enabled:(BOOL)enabled;
/// Thread: main.
- (void)setIsButton3Enabled:(BOOL)enabled;
/// Never sent.
- (void)setIsButton1Hidden:(BOOL)hidden;
/// Never sent.
- (void)setIsButton2Hidden:(BOOL)hidden;
/// Thread: main.
- (void)setIsButton3Hidden:(BOOL)hidden;
/// The host's language parser, an object that answers `getStringByKey:`. Both are asked on the main thread for the
/// slides, and on the thread of the last package for "FINISH.TITLE".
- (id)getLangParser;
@optional
/// Sent once, when the whole installation has finished, on the thread of the last package. After it the host may turn
/// its page, but must keep the pane: nothing that it started is stopped by its destruction.
- (void)continueToNextPlugin;
@end

/// One page of the host's wizard: installs the components that the user picked, from the media or from the web.
///
/// The host creates one instance with `initWithModel:` on its main thread and forwards its three wizard buttons. All
/// fields are plain instance variables, read by name by the nib and by key-value coding. They are grouped by the
/// operations that write them. Installer threads touch those marked with a diamond: they run one after another, and
/// what the main thread reads meanwhile is read and written whole (`base/SharedValue.hpp`,
/// `selection/…+PackageLists.h`).
///
/// Thread: main, where an operation says nothing else.
@interface VantInstallation : NSObject {
    // The host: set at creation.
    NSDictionary *modelInfo;
    id<VantObserver> mObserver; // ◆ told of the end
    IBOutlet NSView *mView;

    // The user settings: set at creation.
    NSString *mUserOptionsFilePath5;
    int mSmartUpdate;
    int mWebError;
    BOOL VantInstallationDebugFlag; // ◆ read before each trace entry

    // The run as a whole: creation, administrator rights, the network's end, set-aside.
    BOOL mAuthCancelledOrError;
    BOOL mInstallationInProgressStatus;
    BOOL mNonFlatInstaller;
    BOOL uploadToRDSDone;

    // The installation of packages: obtained by the main thread, then the installer threads' own.
    int status;                                 // ◆
    AuthorizationRef authorizationRef;          // ◆
    NSMutableDictionary *mInstalledPackageDict; // ◆ outcome words by package file name
    double mProgressindicatorValue;             // ◆ read by the main thread's updates
    double mShownInstallationProgress;          // ◆ what the installation bar shows; written by the main thread

    // The lists of packages: filled by the main thread, counted and read by installer threads.
    NSMutableArray *mInstallCompArrayForSmartUpdate; // ◆
    NSMutableArray *mInstallCompArrayForCDUpdate;    // ◆

    // The selections and their rows.
    NSMutableArray *selectedarrXML;
    NSMutableArray *selectedarrXML1;
    NSMutableArray *objects;
    NSMutableArray *objects1;
    IBOutlet NSTableView *list1;
    NSMutableArray *mSelectedSoftwareList;

    // Bookkeeping of what was selected.
    NSMutableArray *selectedmodellocations;
    int selectedcomponentCount;
    NSString *locationstr;
    BOOL isParseXML;
    BOOL isParseXML1;
    NSMutableArray *installedcountArr;
    NSMutableArray *installedcountArr1;
    NSArray *objIndexArray;
    NSMutableArray *scancounts;

    // The downloads and what they expand into.
    NSMutableArray *myDownloadinfoArray;
    NSMutableArray *myMutableArray;
    struct VantFinishOrder *finishOrder; // which finish may be announced
    NSMutableArray *downloadcompletedcountArr;
    NSMutableArray *unzipcountArr;
    NSString *documentsDirectoryPath;
    int scannerCount;
    int copyflag;
    int installflag;

@package // The download that was started last: shared with the rules of `ArchiveDownload`, which serve the rows too.
    int nRetry;
    NSString *ulrList;
    NSString *sFilePath;
    NSURLDownload *filedownload;
    NSDictionary *downloadinfo;
    NSDictionary *downloadindexDic;
    NSMutableArray *TestArray;
    double double_percent;
    NSProgressIndicator *discreteProgress;
    double mDownloadProgress;
    int errcodeStr;
    BOOL downloadIsIndeterminate;
    float downloadProgress;
    long long expectedContentLength;
    long long downloadedSoFar;
    NSURL *fileURL;

@protected
    // The bars and the status line, connected by the nib: touched by `StatusLine` alone.
    IBOutlet NSProgressIndicator *mVTPackageDownloadProg;
    IBOutlet NSProgressIndicator *mVTPackageInstallationProg;
    IBOutlet NSProgressIndicator *mVTPackageInstallationProgDummy;
    IBOutlet NSTextField *mProgressInfoTF;

    // The slides: connected by the nib, touched by `SlideRotation` alone.
    IBOutlet NSImageView *imageView;
    IBOutlet NSButton *nextButton;
    IBOutlet NSButton *backButton;
    IBOutlet NSTextField *productTitle;
    IBOutlet NSTextField *productDesc;
    IBOutlet NSMatrix *radioButton;
    NSTimer *timer;
    BOOL autoTrigger;
    NSInteger prevSelection;
    VantComponentTable *componentTable; // told how the run goes; told, too, when the pane is destroyed

    // Part of the interface that hosts and nibs were written against; no operation uses them.
    NSString *ReadMDLstring;
    NSString *downlodedpath;
    NSURL *originalURL;
    NSURLDownload *xmldownload;
    NSURL *xmloriginalURL;
    NSURL *xmlfileURL;
    BOOL downloading;
    double xml_percent;
    NSString *installfileDirectoryPath;
    NSString *componentName;
    int unzipcount;
    NSURLRequest *request;
}

/// Creates the pane for a model record ("Model Observer", "VendorName") and starts its flow. Returns after the
/// administrator prompt has been answered; nil when the nib cannot be loaded. Thread: main, as all operations that the
/// host calls.
- (id)initWithModel:(NSDictionary *)model;

/// The pane's root view, as the nib connected it.
- (NSView *)contentView;

/// The page's title, from the "Localizable-Inst" table of the host application's own bundle.
- (NSString *)windowTitle;

/// A new array with the kinds of software that the user selected.
- (NSArray *)model;

/// The string "NO" after a refused administrator prompt, else "YES". A string by contract, not a boolean.
- (NSString *)isPluginValid;

/// "0" always.
- (NSString *)performButton1Action;
/// "0" always.
- (NSString *)performButton2Action;
/// "3" after a refused administrator prompt, else "0".
- (NSString *)performButton3Action;

/// YES always.
- (BOOL)needToShowQuitSheet;

/// The host's language parser, nil without an observer. Thread: any.
- (id)langParser;

/// The plug-in's own string for a key of table "Localizable-Inst"; the key itself when the table lacks it. Thread: any.
- (NSString *)localizedStringForKey:(NSString *)key;

/// Accepted and ignored: the pane keeps no button state.
- (void)setIsButton1Enabled:(BOOL)enabled;
- (void)setIsButton2Enabled:(BOOL)enabled;
- (void)setIsButton3Enabled:(BOOL)enabled;
- (void)setIsButton1Hidden:(BOOL)hidden;
- (void)setIsButton2Hidden:(BOOL)hidden;
- (void)setIsButton3Hidden:(BOOL)hidden;

/// Writes one trace entry when tracing is on; the message is formatted only then. Thread: any.
- (void)trace:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);

@end

/// The steps of both flows start this long, in seconds, after what leads to them.
static const NSTimeInterval VantInstallationDelay = 3.0;

/// Finished downloads handed to expansion so far in this process; only ever incremented. Main thread.
extern int cdDownloadIndex;

/// Position of the next package to install in whichever list is running, in this process; only ever incremented, by
/// installer threads. Read by the main thread's updates too: see `base/SharedValue.hpp`.
extern int cdInstallIndex;

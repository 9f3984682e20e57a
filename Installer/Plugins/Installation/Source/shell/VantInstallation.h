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
/// Sent once, when the whole installation has finished, on the thread of the last package. From within it the host may
/// turn its page and let the pane go.
- (void)continueToNextPlugin;
@end

/// One page of the host's wizard: installs the components that the user picked, from the media or from the web.
///
/// The host creates one instance with `initWithModel:` on its main thread and forwards its three wizard buttons. It may
/// let the pane go at any moment after that, before or after the window that shows its view. That stops nothing: a run
/// that has begun holds the pane and ends as ever, and its observer, which the model record holds, hears of the end.
/// Controls and table of the view may still be used then, and do nothing.
///
/// All fields are plain instance variables, read by name by the nib and by key-value coding. They are grouped by the
/// operations that write them. Installer threads touch those marked with a diamond: they run one after another, and
/// what the main thread reads meanwhile is read and written whole (`base/SharedValue.hpp`,
/// `selection/…+PackageLists.h`).
///
/// Thread: main, where an operation says nothing else.
@interface VantInstallation : NSObject {
    // The host: set at creation.
    NSDictionary *modelInfo;    ///< the model record; held from creation to destruction
    id<VantObserver> mObserver; ///< ◆ the host's observer, not owned; told of the end
    IBOutlet NSView *mView;     ///< root view

    // The user settings: set at creation.
    NSString *mUserOptionsFilePath5; ///< full path of the settings file
    int mSmartUpdate;                ///< 1 when "Smart Update" is "1", else 0
    int mWebError;                   ///< 1 when "WebError" is "1", else 0: no web flow then
    BOOL VantInstallationDebugFlag;  ///< ◆ whether the trace log is written; read before each entry

    // The run as a whole: creation, administrator rights, the network's end, set-aside.
    BOOL mAuthCancelledOrError;         ///< the rights were refused: the pane is invalid
    BOOL mInstallationInProgressStatus; ///< the network was given up: once per pane
    BOOL mNonFlatInstaller;             ///< the set-aside folder was opened
    BOOL uploadToRDSDone;               ///< YES from creation on

    // The installation of packages: obtained by the main thread, then the installer threads' own.
    int status;                                 ///< ◆ result of the last authorization call, or of the output's end
    AuthorizationRef authorizationRef;          ///< ◆ obtained once, used for every package
    NSMutableDictionary *mInstalledPackageDict; ///< ◆ outcome words by package file name
    double mProgressindicatorValue;             ///< ◆ last progress computed; read by the main thread's updates
    double mShownInstallationProgress;          ///< ◆ what the installation bar shows; written by the main thread

    // The lists of packages: filled by the main thread, counted and read by installer threads.
    NSMutableArray *mInstallCompArrayForSmartUpdate; ///< ◆ web records
    NSMutableArray *mInstallCompArrayForCDUpdate;    ///< ◆ media records

    // The selections and their rows.
    NSMutableArray *selectedarrXML;        ///< entries of the web selection
    NSMutableArray *selectedarrXML1;       ///< entries of the media selection
    NSMutableArray *objects;               ///< a `BDObject` for each web entry
    NSMutableArray *objects1;              ///< a `BDObject` for each media entry
    IBOutlet NSTableView *list1;           ///< the table of rows
    NSMutableArray *mSelectedSoftwareList; ///< kinds reported to the host

    // Bookkeeping of what was selected.
    NSMutableArray *selectedmodellocations; ///< locations of the components taken up
    int selectedcomponentCount;             ///< their number
    NSString *locationstr;                  ///< the location taken up last
    BOOL isParseXML;                        ///< YES from set-up on
    BOOL isParseXML1;                       ///< YES from set-up on
    NSMutableArray *installedcountArr;      ///< made new by the web view
    NSMutableArray *installedcountArr1;     ///< made new by the media view
    NSArray *objIndexArray;                 ///< copy of `myDownloadinfoArray` when the view had begun
    NSMutableArray *scancounts;             ///< made new by both views

    // The downloads and what they expand into.
    NSMutableArray *myDownloadinfoArray; ///< an entry for each download started
    NSMutableArray *myMutableArray;      ///< what each `VantDownloadInfoNotification` carried, in order of the files
    struct VantFinishOrder *finishOrder; ///< which finish may be announced
    NSMutableArray *downloadcompletedcountArr; ///< an entry for each download finished
    NSMutableArray *unzipcountArr;             ///< an entry for each archive expanded
    NSString *documentsDirectoryPath;          ///< full path of the expanded item looked at last
    int scannerCount;                          ///< 4 once a Scan Manager has been found
    int copyflag;                              ///< 1 when the last archive held something to set aside
    int installflag;                           ///< 0 always

@package // The download that was started last: shared with the rules of `ArchiveDownload`, which serve the rows too.
    int nRetry;                            ///< retries used for the current address, 0 to 2
    NSString *ulrList;                     ///< address started last
    NSString *sFilePath;                   ///< where it is downloaded to
    id filedownload;                       ///< the platform's object for it
    NSDictionary *downloadinfo;            ///< what the last `VantDownloadInfoNotification` carried
    NSDictionary *downloadindexDic;        ///< what the last `VantWebDownloadStartNotification` carried
    NSMutableArray *TestArray;             ///< never made
    double double_percent;                 ///< percentage of the current file, 0 to 100
    NSProgressIndicator *discreteProgress; ///< bar of the current download; the pane has none
    double mDownloadProgress;              ///< percentage last reported, 0 to 100
    int errcodeStr;                        ///< last download error code, 0 without one
    BOOL downloadIsIndeterminate;          ///< cleared by a response with a length
    float downloadProgress;                ///< fraction of the current file, 0 to 1
    long long expectedContentLength;       ///< bytes announced by the last response, -1 when unknown
    long long downloadedSoFar;             ///< bytes received since then, of all downloads
    NSURL *fileURL;                        ///< the file created last

@protected
    // The bars and the status line, connected by the nib: touched by `StatusLine` alone.
    IBOutlet NSProgressIndicator *mVTPackageDownloadProg;          ///< 0 to 100, over all downloads
    IBOutlet NSProgressIndicator *mVTPackageInstallationProg;      ///< 0 to 100, over all packages
    IBOutlet NSProgressIndicator *mVTPackageInstallationProgDummy; ///< stands in for both until there is work
    IBOutlet NSTextField *mProgressInfoTF;                         ///< the status line

    // The slides: connected by the nib, touched by `SlideRotation` alone.
    IBOutlet NSImageView *imageView;    ///< picture of the page
    IBOutlet NSButton *nextButton;      ///< tag 2
    IBOutlet NSButton *backButton;      ///< tag 1
    IBOutlet NSTextField *productTitle; ///< title of the page
    IBOutlet NSTextField *productDesc;  ///< text of the page
    IBOutlet NSMatrix *radioButton;     ///< page dots, tag 0
    NSTimer *timer;                     ///< turns the pages until the user does
    BOOL autoTrigger;                   ///< the timer has turned a page
    NSInteger prevSelection;            ///< page shown, 0 or 1
    VantComponentTable *componentTable; ///< told how the run goes, and when the pane is destroyed

    // Part of the interface that hosts and nibs were written against; no operation uses them.
    NSString *ReadMDLstring;
    NSString *downlodedpath;
    NSURL *originalURL;
    id xmldownload;
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

#import <Cocoa/Cocoa.h>
#import <Security/Authorization.h>

@class BDObject;

/// What the pane asks of the host's observer, the "Model Observer" of the model record. The host's class is its own;
/// the pane only sends these.
@protocol VantObserver <NSObject>
- (void)setIsButton1Enabled:(BOOL)enabled;
- (void)setIsButton2Enabled:(BOOL)enabled;
- (void)setIsButton3Enabled:(BOOL)enabled;
- (void)setIsButton1Hidden:(BOOL)hidden;
- (void)setIsButton2Hidden:(BOOL)hidden;
- (void)setIsButton3Hidden:(BOOL)hidden;
/// The host's language parser, an object that answers `getStringByKey:`.
- (id)getLangParser;
@optional
/// Sent once, when the whole installation has finished.
- (void)continueToNextPlugin;
@end

/// One page of the host's wizard: installs the components that the user picked, from the media or from the web.
///
/// The host creates one instance with `initWithModel:` on its main thread and forwards its three wizard buttons. All
/// fields are plain instance variables, read by name by the interface description and by key-value coding; installer
/// threads share them without locks, because the packages of a run install strictly one after another.
@interface VantInstallation : NSObject {
    NSDictionary *modelInfo;
    id<VantObserver> mObserver;
    IBOutlet NSView *mView;
    NSString *mUserOptionsFilePath5;
    int mSmartUpdate;
    int mWebError;
    BOOL VantInstallationDebugFlag;

    BOOL mAuthCancelledOrError;
    BOOL mInstallationInProgressStatus;
    BOOL mNonFlatInstaller;
    BOOL uploadToRDSDone;
    int status;
    AuthorizationRef authorizationRef;

    NSMutableArray *selectedarrXML;
    NSMutableArray *selectedarrXML1;
    NSMutableArray *objects;
    NSMutableArray *objects1;
    IBOutlet NSTableView *list1;
    NSMutableArray *mSelectedSoftwareList;
    NSMutableArray *mInstallCompArrayForSmartUpdate;
    NSMutableArray *mInstallCompArrayForCDUpdate;
    NSMutableDictionary *mInstalledPackageDict;
    NSMutableArray *selectedmodellocations;
    int selectedcomponentCount;
    NSString *locationstr;
    BOOL isParseXML;
    BOOL isParseXML1;
    int scannerCount;
    NSMutableArray *unzipcountArr;
    NSMutableArray *downloadcompletedcountArr;
    NSMutableArray *installedcountArr;
    NSMutableArray *installedcountArr1;
    NSMutableArray *myMutableArray;
    NSMutableArray *myDownloadinfoArray;
    NSArray *objIndexArray;
    NSMutableArray *scancounts;
    NSString *documentsDirectoryPath;
    int copyflag;
    int installflag;
    double mProgressindicatorValue;

@package // Shared with the download rules, which serve the table rows too.
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
    IBOutlet NSProgressIndicator *mVTPackageDownloadProg;
    IBOutlet NSProgressIndicator *mVTPackageInstallationProg;
    IBOutlet NSProgressIndicator *mVTPackageInstallationProgDummy;
    IBOutlet NSTextField *mProgressInfoTF;
    IBOutlet NSImageView *imageView;
    IBOutlet NSButton *nextButton;
    IBOutlet NSButton *backButton;
    IBOutlet NSTextField *productTitle;
    IBOutlet NSTextField *productDesc;
    IBOutlet NSMatrix *radioButton;
    NSTimer *timer;
    BOOL autoTrigger;
    NSInteger prevSelection;

    // Part of the interface that hosts and interface descriptions were written against; no operation uses them.
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
/// administrator prompt has been answered; nil when the interface description cannot be loaded.
- (id)initWithModel:(NSDictionary *)model;

/// The pane's root view, as the interface description connected it.
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

/// The host's language parser, nil without an observer.
- (id)langParser;

/// The host's string for a key, as its language parser gives it; nil without a parser.
- (NSString *)hostStringForKey:(NSString *)key;

/// The plug-in's own string for a key of table "Localizable-Inst"; the key itself when the table lacks it.
- (NSString *)localizedStringForKey:(NSString *)key;

/// Accepted and ignored: the pane keeps no button state.
- (void)setIsButton1Enabled:(BOOL)enabled;
- (void)setIsButton2Enabled:(BOOL)enabled;
- (void)setIsButton3Enabled:(BOOL)enabled;
- (void)setIsButton1Hidden:(BOOL)hidden;
- (void)setIsButton2Hidden:(BOOL)hidden;
- (void)setIsButton3Hidden:(BOOL)hidden;

/// Writes one trace entry when tracing is on; the message is formatted only then.
- (void)trace:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);

@end

/// Finished downloads handed to expansion so far in this process; only ever incremented.
extern int cdDownloadIndex;

/// Position of the next package to install in whichever list is running, in this process; only ever incremented.
extern int cdInstallIndex;

#import <Cocoa/Cocoa.h>

#import "download/VantDownload.h"

/// One row of the web-download table: its check box, spinner, bar and status text, and the state of one download, whose
/// delegate a row can be. Main thread.
@interface BDObject : NSObject <VantDownloadDelegate> {
@package
    NSProgressIndicator *continuousProgress; ///< the spinner; owned
    NSProgressIndicator *discreteProgress;   ///< the bar, 0 to 99; owned
    int currentStep;                         ///< 0 at creation
    NSButtonCell *checkButton;               ///< the check box
    BOOL checkBTStatus;                      ///< whether the row is ticked
    NSString *sFilePath;                     ///< where its download goes
    id filedownload;                         ///< its download, while a retry of its own runs
    NSURLRequest *request;                   ///< unused, as the others without a word
    double double_percent;                   ///< percentage of the current file, 0 to 100
    NSString *MDLstring;
    NSString *MDLpath;
    NSString *downlodedpath;
    NSURL *originalURL;
    NSURL *fileURL; ///< the file that was created
    id xmldownload;
    NSURL *xmloriginalURL;
    NSURL *xmlfileURL;
    BOOL downloadIsIndeterminate; ///< cleared by a response with a length
    float downloadProgress;       ///< fraction of the current file, 0 to 1
    BOOL downloading;
    long long expectedContentLength; ///< bytes announced, -1 when unknown
    long long downloadedSoFar;       ///< bytes received
    NSDictionary *downloadinfo;      ///< what the last `VantDownloadInfoNotification` carried
    NSDictionary *downloadindexDic;
    NSMutableArray *TestArray; ///< empty
    NSString *Installstatus;   ///< "Installing", "Installed", or any text set
    int errcodeStr;            ///< last download error code, 0 without one
    NSString *Cancelstatus;    ///< "CancelDownload" once cancelled
    NSString *ulrList;         ///< address of the archive
    int nRetry;                ///< retries used, 0 to 2
    double mDownloadProgress;  ///< percentage last reported, 0 to 100
}

- (int)currentStep;
- (void)setNumber:(int)number;

/// Whether the row is ticked, to be downloaded. Ticked at creation.
- (BOOL)getCheckBTStatus;
- (void)setCheckBTStatus:(BOOL)ticked;
- (void)toggleCheckBTStatus;
/// The row's check box cell.
- (NSButtonCell *)checkButton;

/// The spinner and the bar. Setters store without taking ownership, but the row releases both when it is destroyed:
/// hand over a reference.
- (NSProgressIndicator *)continuousProgress;
- (void)setcontinuousProgress:(NSProgressIndicator *)indicator;
- (NSProgressIndicator *)discreteProgress;
- (void)setdiscreteProgress:(NSProgressIndicator *)indicator;

/// The last download error code, 0 without one.
- (int)getErrcodeStr;
- (NSString *)getCancelstatus;
- (void)setCancelstatus:(NSString *)text;

/// Percentage of the current download, 0 to 100.
- (double)double_percent;
/// Percentage last reported, 0 to 100.
- (double)discreteProgressDoubleValue;

- (void)BDInstalling;
- (void)BDInstalled;
- (NSString *)getInstallstatus;
- (void)setInstallstatus:(NSString *)text;

/// Cancels the running download and marks the row cancelled.
- (void)CancelDownload;

@end

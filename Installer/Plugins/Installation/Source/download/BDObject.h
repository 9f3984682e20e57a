#import <Cocoa/Cocoa.h>

/// One row of the web-download table: its check box, spinner, bar and status text, and the state of one download, whose
/// delegate a row can be. Main thread.
@interface BDObject : NSObject <NSURLDownloadDelegate> {
@package
    NSProgressIndicator *continuousProgress;
    NSProgressIndicator *discreteProgress;
    int currentStep;
    NSButtonCell *checkButton;
    BOOL checkBTStatus;
    NSString *sFilePath;
    NSURLDownload *filedownload;
    NSURLRequest *request;
    double double_percent;
    NSString *MDLstring;
    NSString *MDLpath;
    NSString *downlodedpath;
    NSURL *originalURL;
    NSURL *fileURL;
    NSURLDownload *xmldownload;
    NSURL *xmloriginalURL;
    NSURL *xmlfileURL;
    BOOL downloadIsIndeterminate;
    float downloadProgress;
    BOOL downloading;
    long long expectedContentLength;
    long long downloadedSoFar;
    NSDictionary *downloadinfo;
    NSDictionary *downloadindexDic;
    NSMutableArray *TestArray;
    NSString *Installstatus;
    int errcodeStr;
    NSString *Cancelstatus;
    NSString *ulrList;
    int nRetry;
    double mDownloadProgress;
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

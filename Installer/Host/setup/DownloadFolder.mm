#import "DownloadFolder.h"

NSString *VantDownloadFolder(void) {
    return [NSTemporaryDirectory() stringByAppendingPathComponent:@"Vantrel/Download"];
}

void VantRemoveDownloads(void) {
    [[NSFileManager defaultManager] removeItemAtPath:VantDownloadFolder() error:nullptr];
}

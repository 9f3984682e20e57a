#import <Foundation/Foundation.h>

/// The trace log: a text file in the user's log folder, for support. Callers ask only while tracing is on. Any thread.
@interface VantInstallationLogger : NSObject {
    NSMutableString *mVantTraceMsgs;
}
/// The logger that the process shares.
+ (VantInstallationLogger *)progressLogger;
/// Appends one entry to the log; a nil message appends a line feed alone. Written through at once whatever `flush`
/// says. Failures are silent: a log that is not UTF-8 is never touched again.
- (void)logVantTrace:(NSString *)message flush:(BOOL)flush;
@end

/// Appends a text to a file, after a line feed when the file exists already. Atomic: an interrupted write leaves the
/// previous file. Nothing is written for a nil argument or when the file is not UTF-8.
void writeToFile(NSString *path, NSString *text);

/// The first byte of the file, 0 when it cannot be opened, the end-of-file marker's value when it is empty.
unsigned int readFile(NSString *path);

/// Makes sure that the file exists; writes nothing.
void flushFileData(NSString *path);

/// The parent of a process, -1 when the kernel knows no such process.
int ProcessIDForParentOfProcessID(int pid);

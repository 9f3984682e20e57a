#import "shell/VantInstallationLogger.h"

#import "base/Bridge.h"
#include "base/TextBytes.hpp"
#include "shell/TraceEntry.hpp"

#include <cstdio>
#include <sys/sysctl.h>

@implementation VantInstallationLogger

+ (VantInstallationLogger *)progressLogger {
    static VantInstallationLogger *const shared = [[VantInstallationLogger alloc] init];
    return shared;
}

- (id)init {
    self = [super init];
    if (self != nil)
        mVantTraceMsgs = [[NSMutableString alloc] init];
    return self;
}

- (void)dealloc {
    [mVantTraceMsgs release];
    [super dealloc];
}

- (void)logVantTrace:(NSString *)message flush:(BOOL)flush {
    // The flag is accepted for the callers' sake: every entry is written through, so that a crash loses none.
    (void)flush;
    @synchronized(self) {
        if (message != nil) {
            const std::time_t now = std::time(nullptr);
            std::tm when{};
            localtime_r(&now, &when);
            [mVantTraceMsgs appendString:vant::nsString(vant::traceEntry(vant::utf8(message), when))];
        }
        NSString *path = [NSString stringWithFormat:@"%@/Library/Logs/Quorvel VantMain.log", NSHomeDirectory()];
        writeToFile(path, mVantTraceMsgs);
        [mVantTraceMsgs setString:@""];
    }
}

@end

void writeToFile(NSString *path, NSString *text) {
    if (path == nil || text == nil)
        return;
    // As bytes: a string would lose a byte order mark at the head of the file.
    NSMutableData *content = [NSMutableData data];
    if ([[NSFileManager defaultManager] fileExistsAtPath:path]) {
        NSData *existing = [NSData dataWithContentsOfFile:path];
        if (existing == nil || !vant::isUTF8({static_cast<const char *>([existing bytes]), [existing length]}))
            return;
        [content appendData:existing];
        [content appendBytes:"\n" length:1];
    }
    const std::string added = vant::utf8(text);
    [content appendBytes:added.data() length:added.size()];
    [content writeToFile:path atomically:YES];
}

unsigned int readFile(NSString *path) {
    FILE *file = std::fopen([path fileSystemRepresentation], "r");
    if (file == nullptr)
        return 0;
    const int first = std::fgetc(file);
    std::fclose(file);
    return static_cast<unsigned int>(first);
}

void flushFileData(NSString *path) {
    FILE *file = std::fopen([path fileSystemRepresentation], "a");
    if (file != nullptr)
        std::fclose(file);
}

int ProcessIDForParentOfProcessID(int pid) {
    int query[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, pid};
    kinfo_proc record{};
    size_t length = sizeof record;
    if (sysctl(query, 4, &record, &length, nullptr, 0) != 0 || length == 0)
        return -1;
    return record.kp_eproc.e_ppid;
}

// Downloads every address given into a folder, all at once on the main run loop, as the pane does.
// Usage: DownloadBench FOLDER ADDRESS...   Exit status 0 when all have finished. It prints the seconds that this took
// and the CPU seconds, without the process's start, and the process's peak memory in KiB.
#import <Foundation/Foundation.h>

#include "Memory.hpp"
#include <chrono>
#include <cstdio>
#include <sys/resource.h>

@interface BenchDelegate : NSObject {
@public
    int left;
    int failed;
    unsigned long long received;
}
@end

@implementation BenchDelegate
- (void)download:(NSURLDownload *)download didReceiveDataOfLength:(NSUInteger)length {
    received += length;
}
- (void)downloadDidFinish:(NSURLDownload *)download {
    left--;
}
- (void)download:(NSURLDownload *)download didFailWithError:(NSError *)error {
    left--;
    failed++;
    NSLog(@"%@: %@", [[download request] URL], error);
}
@end

static double seconds(const timeval &time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

static rusage usage() {
    rusage result{};
    getrusage(RUSAGE_SELF, &result);
    return result;
}

int main(int argc, char **argv) {
    if (argc < 3) {
        fprintf(stderr, "usage: DownloadBench FOLDER ADDRESS...\n");
        return 2;
    }
    @autoreleasepool {
        BenchDelegate *delegate = [[[BenchDelegate alloc] init] autorelease];
        NSString *folder = [NSString stringWithUTF8String:argv[1]];
        delegate->left = argc - 2;
        const auto start = std::chrono::steady_clock::now();
        const rusage before = usage();
        for (int i = 2; i < argc; ++i) {
            NSURL *address = [NSURL URLWithString:[NSString stringWithUTF8String:argv[i]]];
            NSURLRequest *request = [NSURLRequest requestWithURL:address];
            NSURLDownload *download = [[NSURLDownload alloc] initWithRequest:request delegate:delegate];
            NSString *name = [NSString stringWithFormat:@"%d", i];
            [download setDestination:[folder stringByAppendingPathComponent:name] allowOverwrite:YES];
            [download release];
        }
        while (delegate->left > 0)
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        const rusage after = usage();
        printf("%.4f %.4f %ld\n", elapsed.count(),
               seconds(after.ru_utime) + seconds(after.ru_stime) - seconds(before.ru_utime) - seconds(before.ru_stime),
               vant::bench::peakMemory());
        return delegate->failed == 0 ? 0 : 1;
    }
}

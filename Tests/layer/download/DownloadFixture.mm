#import "DownloadFixture.h"

#include <filesystem>

namespace vant::test {

DownloadTest::DownloadTest() : pool([[NSAutoreleasePool alloc] init]) {
    std::string name = std::filesystem::temp_directory_path() / "urldownload-XXXXXX";
    folder = [[NSString alloc] initWithUTF8String:mkdtemp(name.data())];
    recorder = [[DownloadRecorder alloc] init];
}

DownloadTest::~DownloadTest() {
    [recorder release];
    std::filesystem::remove_all([folder UTF8String]);
    [folder release];
    [pool release];
}

NSMutableURLRequest *DownloadTest::request(const std::string &address, NSTimeInterval timeOut) {
    return [NSMutableURLRequest requestWithURL:[NSURL URLWithString:[NSString stringWithUTF8String:address.c_str()]]
                                   cachePolicy:NSURLRequestUseProtocolCachePolicy
                               timeoutInterval:timeOut];
}

NSURLDownload *DownloadTest::startRequest(NSURLRequest *request, id delegate) {
    return [[[NSURLDownload alloc] initWithRequest:request delegate:delegate] autorelease];
}

NSURLDownload *DownloadTest::start(const std::string &address, NSString *file, BOOL overwrite) {
    NSURLDownload *download = startRequest(request(address), recorder);
    [download setDestination:path(file) allowOverwrite:overwrite];
    return download;
}

void DownloadTest::fetch(const std::string &address, NSString *file, BOOL overwrite) {
    start(address, file, overwrite);
    EXPECT_TRUE(runUntil([&] { return [recorder done]; })) << "told so far: " << text([recorder story]);
}

NSString *DownloadTest::path(NSString *name) const {
    return [folder stringByAppendingPathComponent:name];
}

NSData *DownloadTest::contents(NSString *name) const {
    return [NSData dataWithContentsOfFile:path(name)];
}

bool DownloadTest::exists(NSString *name) const {
    return [[NSFileManager defaultManager] fileExistsAtPath:path(name)];
}

void DownloadTest::put(NSString *name, const std::string &text) const {
    NSData *data = [NSData dataWithBytes:text.data() length:text.size()];
    EXPECT_TRUE([data writeToFile:path(name) atomically:NO]);
}

bool runUntil(const std::function<bool()> &condition, NSTimeInterval seconds) {
    NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:seconds];
    while (!condition() && [limit timeIntervalSinceNow] > 0) {
        @autoreleasepool {
            NSDate *soon = [NSDate dateWithTimeIntervalSinceNow:0.05];
            if (![[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:soon])
                [NSThread sleepUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.002]];
        }
    }
    return condition();
}

void runFor(NSTimeInterval seconds) {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    runUntil([&] { return [end timeIntervalSinceNow] <= 0; }, seconds + 1);
}

std::string pattern(std::size_t length) {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i)
        bytes[i] = patternByte(i);
    return bytes;
}

std::string text(NSString *string) {
    return string ? [string UTF8String] : "(nil)";
}

std::size_t openDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace vant::test

#import "WebTest.h"

#import "download/VantInstallation+WebDriver.h"
#import "install/chain/VantInstallation+UnpackChain.h"

#include "Jail.hpp"
#include <atomic>

namespace fs = std::filesystem;

@implementation VantAnnouncedResponse

+ (NSURLResponse *)ofLength:(long long)announced {
    VantAnnouncedResponse *response = [[[self alloc] init] autorelease];
    response->length = announced;
    return static_cast<NSURLResponse *>(static_cast<id>(response));
}

- (long long)expectedContentLength {
    return length;
}

@end

/// A download as its delegate sees it, whose address is nobody's.
@interface VantIdleDownload : NSObject
- (NSURLRequest *)request;
@end

@implementation VantIdleDownload

- (NSURLRequest *)request {
    return nil;
}

@end

namespace vant::test {

NSError *urlError(int code) {
    return [NSError errorWithDomain:NSURLErrorDomain code:code userInfo:nil];
}

NSURLDownload *idleDownload() {
    return static_cast<NSURLDownload *>(static_cast<id>([[VantIdleDownload alloc] init]));
}

WebTest::WebTest() {
    for (const char *list : {"myMutableArray", "unzipcountArr", "downloadcompletedcountArr", "myDownloadinfoArray"})
        field<id>(pane, list) = [[NSMutableArray alloc] init];
    select(1);
    followTheChain();
    NSNotificationCenter *centre = [NSNotificationCenter defaultCenter];
    [centre addObserver:pane selector:@selector(ReNotification:) name:@"webDownloadStartNotification" object:nil];
    for (NSString *name in @[ @"downloadinfoo", @"downloadcompleted" ])
        [centre addObserver:pane selector:@selector(receivedownloadNotification:) name:name object:nil];
    [centre addObserver:pane selector:@selector(receiveunzipNotification:) name:@"unzipcompleted" object:nil];
}

void WebTest::select(int count) {
    NSMutableArray *selection = [[NSMutableArray alloc] init];
    for (int i = 0; i < count; ++i)
        [selection addObject:entry(@"Print Driver", [NSString stringWithFormat:@"http://127.0.0.1:1/%d.zip", i])];
    field<id>(pane, "selectedarrXML") = selection;
}

static std::atomic<int> calls = 0;

static void countCall(id, SEL, id) {
    ++calls;
}

void WebTest::countInstead(SEL operation) {
    calls = 0;
    method_setImplementation(class_getInstanceMethod(paneClass(), operation), reinterpret_cast<IMP>(countCall));
}

int WebTest::counted() {
    return calls;
}

fs::path WebTest::downloads() {
    return temporary("Vantrel/Download");
}

fs::path WebTest::desktop() {
    return home() / "Desktop" / "QuorvelPrinter";
}

fs::path WebTest::expandedFolder(std::string_view name, const std::vector<std::string> &items) {
    fs::path folder = downloads() / name;
    fs::create_directories(folder);
    for (const std::string &item : items)
        writeFile(folder / item, "content of " + item);
    return folder;
}

void WebTest::postExpanded(const fs::path &folder) {
    [[NSNotificationCenter defaultCenter] postNotificationName:@"unzipcompleted"
                                                        object:nil
                                                      userInfo:@{@"path" : ns(folder), @"BDObject" : pane}];
}

std::vector<std::string> WebTest::listed(NSString *key) const {
    std::vector<std::string> values;
    for (NSDictionary *record in webList) {
        NSString *value = [record objectForKey:key];
        values.push_back(value == nil ? "-" : text(value));
    }
    return values;
}

std::vector<std::string> WebTest::listedPaths() const {
    return listed(@"installerpath");
}

std::vector<std::string> WebTest::listedNames() const {
    return listed(@"componentname");
}

} // namespace vant::test

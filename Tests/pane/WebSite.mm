#import "WebSite.h"

#import "download/VantInstallation+WebDriver.h"

#include "Jail.hpp"

#include <chrono>
#include <functional>
#include <thread>

namespace fs = std::filesystem;

namespace vant::test {

/// Tells a file's content from another. Not the content itself, which a failed comparison would print: the host
/// application lies in the jail too.
static std::string fingerprint(const fs::path &path) {
    const std::string content = contentsOf(path);
    return std::to_string(content.size()) + " bytes, " + std::to_string(std::hash<std::string>{}(content));
}

WebSite::WebSite() {
    for (NSString *name in @[ @"downloadinfoo", @"downloadcompleted", @"unzipcompleted" ])
        [log watch:name];
    countInstead(@selector(InstallWebComponents:));
    field<id>(pane, "selectedarrXML") = [[NSMutableArray alloc] init];
    before_ = outside();
}

void WebSite::TearDown() {
    EXPECT_EQ(outside(), before_) << "something outside the pane's own folders was touched";
}

WebSite::Snapshot WebSite::outside() {
    // The last three are the platform's: its daemons come up, and write, whenever they are ready.
    const fs::path own[] = {temporary("Vantrel"),
                            desktop(),
                            installRoot(),
                            traceLog(),
                            jail() / "scratch",
                            home() / "GNUstep",
                            temporary("NSMessagePort"),
                            temporary("GSLaunchedApplications")};
    Snapshot snapshot;
    for (auto item = fs::recursive_directory_iterator(jail()); item != fs::recursive_directory_iterator(); ++item) {
        if (std::find(std::begin(own), std::end(own), item->path()) != std::end(own)) {
            item.disable_recursion_pending();
            continue;
        }
        snapshot[item->path().string()] = item->is_regular_file() ? fingerprint(item->path()) : "no file";
    }
    return snapshot;
}

std::string WebSite::offer(const std::string &target, HttpReply reply) {
    server.serve(target, std::move(reply));
    offerAddress(server.url(target));
    return server.url(target);
}

std::string WebSite::offer(const std::string &target, std::string body) {
    HttpReply reply;
    reply.body = std::move(body);
    return offer(target, std::move(reply));
}

void WebSite::offerAddress(const std::string &address) {
    addresses_.push_back(address);
    [field<NSMutableArray *>(pane, "selectedarrXML") addObject:entry(@"Print Driver", ns(address))];
}

void WebSite::forgetOffers() {
    addresses_.clear();
    [field<NSMutableArray *>(pane, "selectedarrXML") removeAllObjects];
}

void WebSite::startAll() {
    for (const std::string &address : addresses_)
        [pane webDriverDownloading:ns(address)];
}

void WebSite::download(const std::string &address) {
    [pane webDriverDownloading:ns(address)];
    EXPECT_TRUE(waitUntil([&] { return errorCode() != 0 || [log countOf:@"downloadcompleted"] > 0; }, 30.0));
}

static double timeOut = 60.0;
static IMP originalRequest = nullptr;

static id requestWithTimeOut(id self, SEL operation, NSURL *url, NSURLRequestCachePolicy policy, NSTimeInterval) {
    using Request = id (*)(id, SEL, NSURL *, NSURLRequestCachePolicy, NSTimeInterval);
    return reinterpret_cast<Request>(originalRequest)(self, operation, url, policy, timeOut);
}

void WebSite::shortenTimeOuts(double seconds) {
    timeOut = seconds;
    Method make = class_getClassMethod([NSURLRequest class], @selector(requestWithURL:cachePolicy:timeoutInterval:));
    if (originalRequest == nullptr)
        originalRequest = method_setImplementation(make, reinterpret_cast<IMP>(requestWithTimeOut));
}

bool WebSite::finishes(NSUInteger count) {
    return waitUntil([&] { return [log countOf:@"downloadcompleted"] >= count; }, 30.0);
}

int WebSite::errorCode() const {
    return [pane getErrcodeStr];
}

int WebSite::failuresTraced(int code) const {
    return tracedCount("***ERROR*** Download did fail with error:[" + std::to_string(code) + "]");
}

bool WebSite::hasFallenBack() const {
    return field<BOOL>(pane, "mInstallationInProgressStatus") == YES;
}

std::vector<std::string> WebSite::downloaded() {
    std::vector<std::string> names;
    if (fs::is_directory(downloads())) {
        for (const auto &item : fs::directory_iterator(downloads()))
            names.push_back(item.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void holdUntil(const std::function<bool()> &condition) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(20);
    for (bool holds = false; !holds && Clock::now() < end;) {
        @autoreleasepool {
            holds = condition();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace vant::test

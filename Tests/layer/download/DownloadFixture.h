#pragma once
#import "DownloadRecorder.h"
#include "HttpServer.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace vant::test {

/// A server, a folder and a recording delegate for each test. Everything runs on the test's thread.
class DownloadTest : public testing::Test {
protected:
    DownloadTest();
    ~DownloadTest() override;

    /// A started download to `file` in the test's folder, with the recorder as its delegate; autoreleased.
    NSURLDownload *start(const std::string &address, NSString *file = @"file", BOOL overwrite = YES);
    /// As above with a request of the test's own, and no destination.
    NSURLDownload *startRequest(NSURLRequest *request, id delegate);
    /// A request for an address with a time-out in seconds.
    static NSMutableURLRequest *request(const std::string &address, NSTimeInterval timeOut = 20);
    /// Starts a download and runs the run loop until the end was told.
    void fetch(const std::string &address, NSString *file = @"file", BOOL overwrite = YES);

    NSString *path(NSString *name) const;
    NSData *contents(NSString *name) const;
    bool exists(NSString *name) const;
    void put(NSString *name, const std::string &text) const;
    NSInteger errorCode() const { return [recorder->error code]; }

    NSAutoreleasePool *pool;
    HttpServer server;
    NSString *folder;
    DownloadRecorder *recorder;
};

/// Runs the current thread's run loop until the condition holds; false when it does not within the time.
bool runUntil(const std::function<bool()> &condition, NSTimeInterval seconds = 20);

/// Runs the current thread's run loop for a time in which nothing should happen.
void runFor(NSTimeInterval seconds);

/// A body with a byte for every place, so that a piece lost or moved shows.
std::string pattern(std::size_t length);

/// The text as a string, for what a failing test prints.
std::string text(NSString *string);

/// The number of this process's open descriptors.
std::size_t openDescriptors();

} // namespace vant::test

#import "WebTest.h"

#import "download/VantInstallation+WebDriver.h"

#include "HttpServer.hpp"

using namespace vant::test;

static int asked = 0;

/// The constructor of newer systems, which this one lacks.
static NSURL *urlWithoutEscapes(id, SEL, NSString *address, BOOL escapes) {
    asked += escapes ? 0 : 1;
    return [NSURL URLWithString:address];
}

class Addresses : public WebTest {};

TEST_F(Addresses, AreNotEscapedWhereTheSystemWouldDoSo) {
    class_addMethod(object_getClass([NSURL class]), @selector(URLWithString:encodingInvalidCharacters:),
                    reinterpret_cast<IMP>(urlWithoutEscapes), "@@:@c");
    HttpServer server;
    server.serve("/a%20b.zip", HttpReply{.body = "no archive"});
    [log watch:@"downloadcompleted"];
    [pane webDriverDownloading:ns(server.url("/a%20b.zip"))];
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(waitUntil([this] { return [log countOf:@"downloadcompleted"] == 1; }));
    EXPECT_TRUE(std::filesystem::exists(downloads() / "a%20b.zip"));
}

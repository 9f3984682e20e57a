#pragma once
#include "WebTest.h"

#include "Archives.hpp"
#include "HttpServer.hpp"
#include <map>

namespace vant::test {

/// A pane whose downloads are real: a server on loopback, archives, `ditto`. Fails when anything outside the working
/// folder, the set-aside folder, the install root and the trace log has changed at the end.
class WebSite : public WebTest {
protected:
    WebSite();
    void TearDown() override;

    /// Serves an archive and selects its address as the next download.
    std::string offer(const std::string &target, HttpReply reply);
    std::string offer(const std::string &target, std::string body);
    /// Selects an address that the server need not know.
    void offerAddress(const std::string &address);
    /// Selects nothing any more; the server goes on answering.
    void forgetOffers();
    /// Starts every selected download in order, as the web view does.
    void startAll();
    /// Starts the one download and waits until it has finished or failed for good.
    void download(const std::string &address);

    /// Requests from now on give up after so many seconds instead of 60.
    static void shortenTimeOuts(double seconds);

    [[nodiscard]] bool finishes(NSUInteger count = 1);
    [[nodiscard]] NSUInteger expanded() const { return [log countOf:@"unzipcompleted"]; }
    [[nodiscard]] int errorCode() const;
    /// Trace lines that name the code.
    [[nodiscard]] int failuresTraced(int code) const;
    [[nodiscard]] bool hasFallenBack() const;
    /// Names in the download folder.
    [[nodiscard]] static std::vector<std::string> downloaded();

    HttpServer server;

private:
    using Snapshot = std::map<std::string, std::string>;
    static Snapshot outside();

    std::vector<std::string> addresses_;
    Snapshot before_;
};

/// Keeps a thread of the server waiting for a condition, for a bounded time.
void holdUntil(const std::function<bool()> &condition);

} // namespace vant::test

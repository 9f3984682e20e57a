#import "LineSite.h"

#import "download/VantInstallation+WebDriver.h"

#include "Jail.hpp"
#include <algorithm>

namespace fs = std::filesystem;

namespace vant::test {
namespace {

constexpr double longestRun = 30.0;
constexpr std::size_t retriesAllowed = 2; // in a run, whichever downloads they are for
const std::string package = "Fax.pkg";

std::vector<Line> current;
std::vector<Expansion> seen;
std::size_t failures = 0;
IMP originalFailure = nullptr;

Found look(const fs::path &path, const Line &line) {
    if (!fs::exists(path))
        return Found::Nothing;
    const std::string content = contentsOf(path);
    if (content == line.reply.body)
        return Found::Whole;
    return line.faultyEnd == Line::End::Arrives && content == line.faulty.body ? Found::OtherContent
                                                                               : Found::HalfWritten;
}

/// Stands in for the shell that would run: ditto -xk "archive" "folder".
void expand(id, SEL, NSString *command) {
    NSArray *pieces = [command componentsSeparatedByString:@"\""];
    const fs::path path = text([pieces objectAtIndex:1]);
    const Found found = look(path, current.at(std::stoul(path.stem().string())));
    seen.push_back({path.filename().string(), found});
    if (found == Found::Whole)
        writeFile(fs::path(text([pieces objectAtIndex:3])) / package, "");
}

void countFailure(id self, SEL operation, NSURLDownload *download, NSError *error) {
    ++failures;
    using Failure = void (*)(id, SEL, NSURLDownload *, NSError *);
    reinterpret_cast<Failure>(originalFailure)(self, operation, download, error);
}

} // namespace

LineSite::LineSite() {
    method_setImplementation(class_getInstanceMethod(paneClass(), NSSelectorFromString(@"taskForShellCommand:")),
                             reinterpret_cast<IMP>(&expand));
    originalFailure = method_setImplementation(class_getInstanceMethod(paneClass(), @selector(download:
                                                                                        didFailWithError:)),
                                               reinterpret_cast<IMP>(&countFailure));
}

std::string LineSite::archive(std::size_t number, std::size_t size) {
    return zipOf({{package, std::string(size, static_cast<char>('!' + number % 90))}});
}

void LineSite::reset() {
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    forgetOffers();
    for (const char *list : {"myMutableArray", "unzipcountArr", "downloadcompletedcountArr", "myDownloadinfoArray",
                             "mInstallCompArrayForSmartUpdate"})
        [field<NSMutableArray *>(pane, list) removeAllObjects];
    processCounter("cdDownloadIndex") = 0;
    field<int>(pane, "errcodeStr") = 0;
    field<BOOL>(pane, "mInstallationInProgressStatus") = NO;
    fs::remove_all(downloads());
    seen.clear();
    failures = 0;
}

bool LineSite::run(const std::vector<Line> &lines) {
    reset();
    current = lines_ = lines;
    tries_.assign(lines.size(), 0);
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const std::string target = "/" + nameOf(number);
        server.serve(target, [this, number](const HttpRequest & /*request*/) { return replyOf(number); });
        offerAddress(server.url(target));
    }
    startAll();
    return waitUntil([this] { return allEnded(); }, longestRun);
}

HttpReply LineSite::replyOf(std::size_t number) {
    const std::lock_guard lock(mutex_);
    const Line &line = lines_.at(number);
    return line.isFaulty(++tries_.at(number)) ? line.faulty : line.reply;
}

int LineSite::triesFor(std::size_t number) const {
    const std::lock_guard lock(mutex_);
    return tries_.at(number);
}

std::size_t LineSite::replies() const {
    std::size_t count = 0;
    for (std::size_t number = 0; number < lines_.size(); ++number)
        count += static_cast<std::size_t>(triesFor(number));
    return count;
}

std::size_t LineSite::faultyReplies(Line::End end) const {
    std::size_t count = 0;
    for (std::size_t number = 0; number < lines_.size(); ++number)
        count += lines_[number].faultyEnd == end ? lines_[number].faultyOf(triesFor(number)) : 0;
    return count;
}

std::size_t LineSite::arrivals() const {
    return replies() - faultyReplies(Line::End::IsRetried) - faultyReplies(Line::End::IsFinal);
}

bool LineSite::allEnded() const {
    const auto retries = static_cast<std::size_t>(field<int>(pane, "nRetry"));
    const std::size_t announced = [field<NSArray *>(pane, "downloadcompletedcountArr") count];
    return replies() == lines_.size() + retries && announced == arrivals() && announced + failures == replies();
}

void LineSite::expectNoMoreLostThanTheFailuresCost() const {
    const std::vector<std::string> places = created();
    ASSERT_EQ(places.size(), replies());
    EXPECT_EQ(replies() - lines_.size(), std::min(retriesAllowed, faultyReplies(Line::End::IsRetried)))
        << "after error " << errorCode();
    ASSERT_EQ(expansions().size(), arrivals());
    for (std::size_t place = 0; place < expansions().size(); ++place) {
        EXPECT_EQ(expansions()[place].name, places[place]) << "at place " << place;
        EXPECT_NE(expansions()[place].found, Found::HalfWritten) << expansions()[place].name;
    }
    std::vector<std::size_t> cost;
    const auto opened = places.begin() + static_cast<std::ptrdiff_t>(arrivals());
    for (std::size_t number = 0; number < lines_.size(); ++number) {
        const bool isWhole = !lines_[number].isFaulty(triesFor(number));
        if (!isWhole || std::find(places.begin(), opened, nameOf(number)) == opened)
            cost.push_back(number);
    }
    EXPECT_EQ(lost(), cost);
}

std::vector<std::size_t> LineSite::lost() const {
    const std::vector<std::string> paths = listedPaths();
    std::vector<std::size_t> numbers;
    for (std::size_t number = 0; number < lines_.size(); ++number) {
        const std::string path = downloads() / std::to_string(number) / package;
        if (std::find(paths.begin(), paths.end(), path) == paths.end())
            numbers.push_back(number);
    }
    return numbers;
}

std::vector<std::string> LineSite::created() const {
    std::vector<std::string> names;
    for (NSDictionary *info in field<NSArray *>(pane, "myMutableArray"))
        names.push_back(fs::path(text([info objectForKey:@"Path"])).filename().string());
    return names;
}

const std::vector<Expansion> &LineSite::expansions() {
    return seen;
}

} // namespace vant::test

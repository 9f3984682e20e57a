#import "PaneTest.h"

#import "shell/VantInstallationLogger.h"

#include "Jail.hpp"
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <regex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace vant::test;

namespace fs = std::filesystem;

namespace {

/// One entry as the log holds it, for any date.
const std::string entryPattern =
    "Information : (Sun|Mon|Tue|Wed|Thu|Fri|Sat) [A-Z][a-z]{2} [0-9]{2} [0-9]{4} [0-9]{2}:[0-9]{2} [AP]M : "
    "\\[Installation Plugin\\] : ";

bool matches(const std::string &content, const std::string &pattern) {
    return std::regex_match(content, std::regex(pattern));
}

template<class Function>
Function *bundleFunction(const char *symbol) {
    (void)paneClass();
    void *found = dlsym(RTLD_DEFAULT, symbol);
    if (found == nullptr) {
        void *image = dlopen(VANT_TEST_BUNDLE "/VantInstallation", RTLD_LAZY | RTLD_NOLOAD);
        found = image == nullptr ? nullptr : dlsym(image, symbol);
    }
    EXPECT_NE(found, nullptr) << symbol;
    return reinterpret_cast<Function *>(found);
}

std::string now(const char *format) {
    const std::time_t moment = std::time(nullptr);
    char text[64];
    std::strftime(text, sizeof text, format, std::localtime(&moment));
    return text;
}

} // namespace

class TraceLog : public PaneTest {
protected:
    TraceLog() : logger([bundleClass(@"VantInstallationLogger") progressLogger]) {}

    std::string content() { return contentsOf(traceLog()); }

    VantInstallationLogger *logger;
};

TEST_F(TraceLog, TheProcessSharesOneLogger) {
    ASSERT_NE(logger, nil);
    EXPECT_EQ([bundleClass(@"VantInstallationLogger") progressLogger], logger);
}

TEST_F(TraceLog, TheFirstEntryStandsAlone) {
    [logger logVantTrace:@"hello" flush:YES];
    EXPECT_TRUE(matches(content(), entryPattern + "hello \n")) << content();
}

TEST_F(TraceLog, TheDateIsTheLocalOne) {
    // A zone away from the machine's own, which may well be universal time.
    setenv("TZ", "XST-5:45", 1);
    tzset();
    std::string before;
    std::string after;
    do { // the minute may turn between the two readings of the clock
        fs::remove(traceLog());
        before = now("%a %b %d %Y %I:%M %p");
        [logger logVantTrace:@"m" flush:YES];
        after = now("%a %b %d %Y %I:%M %p");
    } while (before != after);
    EXPECT_EQ(content(), "Information : " + before + " : [Installation Plugin] : m \n");
}

TEST_F(TraceLog, EntriesAreSeparatedByAnEmptyLine) {
    [logger logVantTrace:@"one" flush:YES];
    [logger logVantTrace:@"two" flush:YES];
    EXPECT_TRUE(matches(content(), entryPattern + "one \n\n" + entryPattern + "two \n")) << content();
}

TEST_F(TraceLog, AnAbsentMessageAddsALineFeed) {
    [logger logVantTrace:@"one" flush:YES];
    const std::string before = content();
    [logger logVantTrace:nil flush:YES];
    EXPECT_EQ(content(), before + "\n");
}

TEST_F(TraceLog, AnAbsentMessageMakesAnEmptyFile) {
    [logger logVantTrace:nil flush:YES];
    EXPECT_TRUE(fs::exists(traceLog()));
    EXPECT_EQ(content(), "");
}

TEST_F(TraceLog, EveryEntryIsWrittenAtOnceWhateverTheFlagSays) {
    [logger logVantTrace:@"now" flush:NO];
    EXPECT_TRUE(matches(content(), entryPattern + "now \n")) << content();
}

TEST_F(TraceLog, MessagesOfAnyTextAreKept) {
    [logger logVantTrace:@"50 % %@ %s é 日本 🖨 \n second line" flush:YES];
    EXPECT_TRUE(content().ends_with("50 % %@ %s é 日本 🖨 \n second line \n")) << content();
}

TEST_F(TraceLog, ALogThatIsNotUTF8IsNeverTouched) {
    const std::string foreign = "caf\xE9\n";
    writeFile(traceLog(), foreign);
    [logger logVantTrace:@"lost" flush:YES];
    [logger logVantTrace:nil flush:YES];
    EXPECT_EQ(content(), foreign);
}

TEST_F(TraceLog, ALogKeepsEveryByteItBeginsWith) {
    for (const std::string &head : {std::string("\xEF\xBB\xBFmarked"), std::string("\xEF\xBF\xBEswapped")}) {
        writeFile(traceLog(), head);
        [logger logVantTrace:@"one" flush:YES];
        EXPECT_EQ(contentsOf(traceLog()).substr(0, head.size() + 1), head + "\n");
    }
}

TEST_F(TraceLog, AnEntryReplacesTheFileAndLeavesNothingBeside) {
    [logger logVantTrace:@"one" flush:YES];
    const int first = open(traceLog().c_str(), O_RDONLY);
    const std::string before = content();
    [logger logVantTrace:@"two" flush:YES];
    std::string kept(before.size() + 100, '\0');
    kept.resize(static_cast<std::size_t>(read(first, kept.data(), kept.size())));
    close(first);
    EXPECT_EQ(kept, before) << "a reader of the previous file was disturbed";
    EXPECT_GT(content().size(), before.size());
    const fs::directory_iterator folder(traceLog().parent_path());
    EXPECT_EQ(std::distance(begin(folder), end(folder)), 1) << "a temporary file was left behind";
}

TEST_F(TraceLog, WithoutALogFolderEntriesAreDropped) {
    fs::remove_all(traceLog().parent_path());
    [logger logVantTrace:@"lost" flush:YES];
    EXPECT_FALSE(fs::exists(traceLog()));
    fs::create_directories(traceLog().parent_path());
    [logger logVantTrace:@"kept" flush:YES];
    EXPECT_TRUE(matches(content(), entryPattern + "kept \n")) << "the dropped entry was held back: " << content();
}

TEST_F(TraceLog, AFolderInTheLogsPlaceIsLeftAlone) {
    fs::create_directories(traceLog() / "inside");
    [logger logVantTrace:@"lost" flush:YES];
    EXPECT_TRUE(fs::is_directory(traceLog() / "inside"));
}

TEST_F(TraceLog, ConcurrentEntriesAreAllKeptWhole) {
    constexpr int threadCount = 6;
    constexpr int entryCount = 20;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int t = 0; t < threadCount; ++t)
        threads.emplace_back([this, t] {
            for (int i = 0; i < entryCount; ++i) {
                @autoreleasepool {
                    [logger logVantTrace:[NSString stringWithFormat:@"thread %d entry %d", t, i] flush:YES];
                }
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    const std::string written = content();
    for (int t = 0; t < threadCount; ++t)
        for (int i = 0; i < entryCount; ++i) {
            const std::string message = "thread " + std::to_string(t) + " entry " + std::to_string(i) + " \n";
            EXPECT_NE(written.find(message), std::string::npos) << message;
        }
    std::size_t headings = 0;
    for (std::size_t at = written.find("Information : "); at != std::string::npos;
         at = written.find("Information : ", at + 1))
        ++headings;
    EXPECT_EQ(headings, static_cast<std::size_t>(threadCount * entryCount));
}

TEST_F(TraceLog, APaneThatIsNotDebuggedWritesNone) {
    createIdlePane();
    field<BOOL>(pane, "VantInstallationDebugFlag") = NO;
    [pane trace:@"%d", 7];
    EXPECT_FALSE(fs::exists(traceLog()));
    field<BOOL>(pane, "VantInstallationDebugFlag") = YES;
    [pane trace:@"%d of %@", 7, @"nine"];
    EXPECT_TRUE(matches(content(), entryPattern + "7 of nine \n")) << content();
}

class TraceFile : public PaneTest {
protected:
    fs::path path = jail() / "text";
    void (*write)(NSString *,
                  NSString *) = bundleFunction<void(NSString *, NSString *)>("_Z11writeToFileP8NSStringS0_");
    unsigned (*readFirst)(NSString *) = bundleFunction<unsigned(NSString *)>("_Z8readFileP8NSString");
    void (*touch)(NSString *) = bundleFunction<void(NSString *)>("_Z13flushFileDataP8NSString");
};

TEST_F(TraceFile, TextsAreAppendedBehindALineFeed) {
    write(ns(path), @"a");
    EXPECT_EQ(contentsOf(path), "a");
    write(ns(path), @"b");
    write(ns(path), @"");
    EXPECT_EQ(contentsOf(path), "a\nb\n");
}

TEST_F(TraceFile, NothingIsWrittenForAnAbsentPathOrText) {
    write(nil, @"a");
    write(ns(path), nil);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(TraceFile, TheFirstByteIsReadAsAnUnsignedValue) {
    EXPECT_EQ(readFirst(ns(path)), 0U) << "no file";
    writeFile(path, "");
    EXPECT_EQ(readFirst(ns(path)), static_cast<unsigned>(EOF)) << "an empty file";
    writeFile(path, "Az");
    EXPECT_EQ(readFirst(ns(path)), 65U);
    writeFile(path, "\xE9");
    EXPECT_EQ(readFirst(ns(path)), 0xE9U);
    EXPECT_EQ(readFirst(nil), 0U);
}

TEST_F(TraceFile, FlushingMakesAFileAndChangesNone) {
    touch(ns(path));
    EXPECT_TRUE(fs::exists(path));
    writeFile(path, "kept");
    touch(ns(path));
    EXPECT_EQ(contentsOf(path), "kept");
    touch(ns(path / "no" / "folder"));
    touch(nil);
}

TEST_F(TraceFile, ReadingAndFlushingLeaveNoDescriptorOpen) {
    writeFile(path, "x");
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 20; ++i) {
        (void)readFirst(ns(path));
        touch(ns(path));
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(TraceFile, TheParentOfAProcessIsAskedOfTheKernel) {
    auto *parentOf = bundleFunction<int(int)>("_Z29ProcessIDForParentOfProcessIDi");
    EXPECT_EQ(parentOf(getpid()), getppid());
    EXPECT_EQ(parentOf(0x7FFFFFFF), -1);
    EXPECT_EQ(parentOf(-5), -1);
}

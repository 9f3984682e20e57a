#include "GNUstep/tools/tree/Expansion.hpp"
#include "ArchiveBuilder.hpp"
#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "Jail.hpp"

#include <gtest/gtest.h>

namespace vant::tools {

using samples::file;
using samples::Filter;
using samples::Format;

namespace {

/// Empty files, each of which says that it has another name.
class LinkedFiles : public EntryReader {
public:
    explicit LinkedFiles(int count) : left_(count) {}

    bool next(Entry &entry) override {
        entry = {.path = "file " + std::to_string(left_), .mode = 0644, .target = "", .hasOtherNames = true};
        return left_-- > 0;
    }
    bool nextBlock(DataBlock & /*block*/) override { return false; }

private:
    int left_;
};

class Expansion : public testing::Test {
protected:
    /// Expands three files of four bytes each; the error text when that fails, "" otherwise.
    std::string expandWith(const Limits &limits) {
        const std::vector<samples::Item> items{file("a", "1234"), file("b", "1234"), file("c", "1234")};
        FileSource source(writeArchive(jail_.path("a.cpio"), Format::Cpio, Filter::None, items));
        const auto reader = ArchiveReader::cpio(source);
        std::filesystem::create_directory(jail_.path("out"));
        Destination destination(jail_.path("out"), 0777);
        try {
            done_ = expand(*reader, destination, limits, [this] { ++calls_; });
            return {};
        } catch (const ExpansionError &error) {
            return error.what();
        }
    }

    test::Jail jail_;
    Expanded done_;
    int calls_ = 0;
};

} // namespace

TEST_F(Expansion, CountsEntriesAndBytes) {
    EXPECT_EQ(expandWith({}), "");
    EXPECT_EQ(done_.entries, 3U);
    EXPECT_EQ(done_.bytes, 12U);
}

TEST_F(Expansion, TellsOfEveryEntryAndEveryBlock) {
    EXPECT_EQ(expandWith({}), "");
    EXPECT_EQ(calls_, 6);
}

TEST_F(Expansion, StopsAtTheLimitOfEntries) {
    EXPECT_EQ(expandWith({.entries = 3}), "");
    EXPECT_EQ(expandWith({.entries = 2}), "the archive holds more than 2 entries");
    EXPECT_TRUE(std::filesystem::exists(jail_.path("out/b")));
}

TEST_F(Expansion, StopsAtTheLimitOfEntriesWithSeveralNames) {
    Destination destination(jail_.root(), 0777);
    LinkedFiles three(3);
    EXPECT_EQ(expand(three, destination, {.linked = 3}, [] {}).entries, 3U);
    LinkedFiles four(4);
    EXPECT_THROW(expand(four, destination, {.linked = 3}, [] {}), ExpansionError);
}

TEST_F(Expansion, RefusesAFileForWhichThereIsNoRoomBeforeItsFirstByte) {
    EXPECT_EQ(expandWith({.bytes = 12}), "");
    std::filesystem::remove_all(jail_.path("out"));
    EXPECT_EQ(expandWith({.bytes = 11}), "c: refused, needs 4 bytes and has room for 3");
    EXPECT_FALSE(std::filesystem::exists(jail_.path("out/c")));
}

} // namespace vant::tools

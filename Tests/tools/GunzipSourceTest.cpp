#include "GNUstep/tools/archive/GunzipSource.hpp"
#include "ArchiveBuilder.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "Jail.hpp"

#include <gtest/gtest.h>

namespace vant::tools {

using samples::archiveOf;
using samples::file;
using samples::Filter;
using samples::Format;

namespace {

class Gunzip : public testing::Test {
protected:
    /// The decompressed bytes, or the error in brackets.
    std::string read(const std::string &bytes) {
        FileSource compressed(test::writeFile(jail_.path("file.gz"), bytes));
        GunzipSource source(compressed);
        std::string plain;
        try {
            for (auto piece = source.next(); !piece.empty(); piece = source.next())
                plain.append(piece.data(), piece.size());
        } catch (const ExpansionError &error) {
            return "(" + std::string(error.what()) + ")";
        }
        return plain;
    }

    const std::vector<samples::Item> items_{file("a", std::string(200'000, 'a')), file("b", "bee")};
    const std::string plain_ = archiveOf(Format::Cpio, Filter::None, items_);
    const std::string gzip_ = archiveOf(Format::Cpio, Filter::Gzip, items_);
    test::Jail jail_;
};

} // namespace

TEST_F(Gunzip, GivesTheBytesBack) {
    EXPECT_EQ(read(gzip_), plain_);
}

TEST_F(Gunzip, ReadsOneMemberBehindAnother) {
    EXPECT_EQ(read(gzip_ + gzip_), plain_ + plain_);
}

TEST_F(Gunzip, IgnoresWhatStandsBehindTheLastMember) {
    EXPECT_EQ(read(gzip_ + std::string(3000, '\0')), plain_);
    EXPECT_EQ(read(gzip_ + "rest"), plain_);
}

TEST_F(Gunzip, NoticesAWrongChecksumAndAWrongLength) {
    for (const std::size_t fromEnd : {8U, 5U, 4U, 1U}) {
        auto damaged = gzip_;
        damaged[damaged.size() - fromEnd] = static_cast<char>(damaged[damaged.size() - fromEnd] ^ 1);
        EXPECT_EQ(read(damaged), "(the compressed data is damaged)") << fromEnd;
    }
}

TEST_F(Gunzip, NoticesAMissingEnd) {
    for (const std::size_t kept : {gzip_.size() - 1, gzip_.size() - 8, gzip_.size() / 2, std::size_t{3}})
        EXPECT_EQ(read(gzip_.substr(0, kept)), "(the compressed data ends too early)") << kept;
}

TEST_F(Gunzip, LeavesOtherBytesAsTheyAre) {
    FileSource source(test::writeFile(jail_.path("plain"), "plain"));
    PlainBytes plain(source);
    EXPECT_EQ(&plain.source(), &source);
    const auto bytes = source.next();
    EXPECT_EQ(std::string(bytes.data(), bytes.size()), "plain") << "looking at the first bytes does not take them";
}

} // namespace vant::tools

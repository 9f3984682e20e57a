#include "DittoFixture.hpp"

namespace fs = std::filesystem;

namespace vant::test {

using samples::archiveOf;
using samples::file;
using samples::Filter;
using samples::folder;
using samples::Format;
using samples::link;

namespace {

class Zip : public Ditto {
protected:
    ToolRun expandBytes(const std::string &bytes) {
        writeFile(jail_.path("archive"), bytes);
        return ditto("-xk");
    }

    static std::string zipOf(const std::vector<samples::Item> &items) {
        return archiveOf(Format::Zip, Filter::None, items);
    }

    /// The bytes with the `which`th place of `text` (from 0) replaced by another of the same length.
    static std::string replaced(std::string bytes, const std::string &text, const std::string &other, int which) {
        auto at = bytes.find(text);
        for (; which > 0; --which)
            at = bytes.find(text, at + 1);
        return bytes.replace(at, text.size(), other);
    }

    void expectRefused(const std::string &bytes, const std::string &reason) {
        const auto run = expandBytes(bytes);
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
        EXPECT_FALSE(fs::exists(jail_.path("some"))) << "nothing is left";
    }
};

} // namespace

TEST_F(Zip, WhoseEntryBearsAnotherNameThanItsDirectorySaysIsRefused) {
    const auto bytes = zipOf({file("name", "x")});
    expectRefused(replaced(bytes, "name", "evil", 0), "name: the zip's directory and the entry's own header differ");
    expectRefused(replaced(bytes, "name", "evil", 1), "evil: the zip's directory and the entry's own header differ");
    EXPECT_EQ(expandBytes(bytes).status, 0);
}

TEST_F(Zip, WhoseEntryHasAnotherMethodThanItsDirectorySaysIsRefused) {
    auto bytes = zipOf({file("name", "some text that is text that is text")});
    bytes[8] = static_cast<char>(bytes[8] ^ 8);
    expectRefused(bytes, "name: the zip's directory and the entry's own header differ");
}

TEST_F(Zip, InAFormThatCannotBeReadIsRefusedByName) {
    const auto bytes = zipOf({file("name", "x")});
    auto other = bytes;
    other[8] = other[bytes.find("PK\x01\x02") + 10] = 12;
    expectRefused(other, "name: compressed by method 12, which cannot be read here");
    auto encrypted = bytes;
    encrypted[6] = encrypted[bytes.find("PK\x01\x02") + 8] = 1;
    expectRefused(encrypted, "name: encrypted");
}

TEST_F(Zip, WhoseEntriesShareTheirDataIsRefused) {
    const auto bytes = zipOf({file("same", std::string(4000, 'a'))});
    const auto directory = bytes.find("PK\x01\x02");
    const auto end = bytes.find("PK\x05\x06");
    const auto record = bytes.substr(directory, end - directory);
    auto tail = bytes.substr(end);
    tail[8] = tail[10] = 2;
    tail[12] = static_cast<char>(2 * record.size());
    expectRefused(bytes.substr(0, directory) + record + record + tail, "the zip's entries overlap");
}

TEST_F(Zip, KeepsTheBytesOfANameThatIsNoUTF8) {
    auto bytes = zipOf({file("name", "x")});
    bytes = replaced(replaced(bytes, "name", "n\xE9me", 0), "name", "n\xE9me", 0);
    EXPECT_EQ(expandBytes(bytes).status, 0);
    EXPECT_EQ(treeOf(out()), Tree{"n\xE9me = x"});
}

TEST_F(Zip, WithOtherBytesBeforeOrBehindItIsReadInFull) {
    const auto bytes = zipOf({folder("d"), file("d/a", "1"), link("l", "d/a")});
    for (const auto &around : {bytes + std::string(3000, '\0'), "#!/bin/sh\n" + bytes, bytes + "behind"}) {
        const auto run = expandBytes(around);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(treeOf(out()), (Tree{"d", "d/a = 1", "l -> d/a"}));
        fs::remove_all(out());
    }
}

TEST_F(Zip, WithFewerOrMoreRecordsThanItsEndSaysIsRefused) {
    const auto bytes = zipOf({file("a", "1"), file("b", "2")});
    for (const char count : {'\1', '\3'}) {
        auto other = bytes;
        const auto end = other.rfind("PK\x05\x06");
        other[end + 8] = other[end + 10] = count;
        expectRefused(other, "the zip's directory is damaged");
    }
}

TEST_F(Ditto, ACpiosSumsAreTested) {
    auto bytes = contentsOf(fs::path(VANT_FORMS) / "sums.cpio");
    writeFile(jail_.path("archive"), bytes);
    EXPECT_EQ(ditto("-x").status, 0);
    fs::remove_all(out());
    const auto place = bytes.find("the second file");
    ASSERT_NE(place, std::string::npos);
    bytes[place] = 'T';
    writeFile(jail_.path("archive"), bytes);
    const auto run = ditto("-x");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("sum is wrong"), std::string::npos) << run.errors;
    EXPECT_FALSE(fs::exists(out()));
}

} // namespace vant::test

#include "DittoFixture.hpp"

#include <algorithm>
#include <random>

namespace fs = std::filesystem;

namespace vant::test {

using samples::archiveOf;
using samples::file;
using samples::Filter;
using samples::folder;
using samples::Format;
using samples::hardLink;
using samples::Item;
using samples::link;

namespace {

struct Attack {
    const char *name;
    std::vector<Item> items;
};

/// Every attack aims at "outside" in the jail or at a name beside the destination.
class HostileArchive : public Ditto {
protected:
    HostileArchive() {
        writeFile(jail_.path("outside/canary"), "untouched");
        before_ = treeOf(jail_.path("outside"));
    }

    /// Nothing in the jail but the archive and the destination has changed.
    void expectNothingOutside(const std::string &what) {
        fs::remove(jail_.path("archive"));
        fs::remove_all(out());
        fs::remove(out().parent_path());
        fs::remove(jail_.path("some"));
        EXPECT_EQ(treeOf(jail_.path("outside")), before_) << what;
        const Tree expected{"outside", "outside/canary = untouched"};
        EXPECT_EQ(treeOf(jail_.root()), expected) << what;
    }

    [[nodiscard]] std::vector<Attack> attacks() const {
        const auto outside = jail_.path("outside").string();
        Item pipe{.path = "pipe", .kind = Item::Kind::Pipe, .content = {}};
        return {
            {"a step up", {file("../evil", "x")}},
            {"a step up in the middle", {file("a/../../evil", "x")}},
            {"a step up at the end", {folder("a/../..")}},
            {"an absolute path", {file(outside + "/canary", "x")}},
            {"an absolute folder", {folder(outside + "/new")}},
            {"a file through a link", {folder("d"), link("l", "d"), file("l/f", "x")}},
            {"a file through a link out", {link("l", outside), file("l/canary", "x")}},
            {"a file through a link a step up", {link("l", "../outside"), file("l/canary", "x")}},
            {"a folder through a link", {folder("d"), link("l", "d"), folder("l/e")}},
            {"a link's name taken by a folder", {folder("d"), link("l", "d"), folder("l")}},
            {"a pipe", {pipe}},
        };
    }

    Tree before_;
};

} // namespace

TEST_F(HostileArchive, IsRefusedAndChangesNothing) {
    for (const auto &shape : shapes) {
        for (const auto &attack : attacks()) {
            if (shape.format == Format::Zip && attack.items.front().kind == Item::Kind::Pipe)
                continue; // a zip has no word for a pipe
            auto items = attack.items;
            items.insert(items.begin(), file("good", "good"));
            const auto run = expand(shape, items);
            const auto what = std::string(shape.name) + ": " + attack.name;
            EXPECT_EQ(run.status, 1) << what;
            EXPECT_EQ(run.errors.rfind("ditto: ", 0), 0U) << what << run.errors;
            EXPECT_FALSE(fs::exists(out())) << what;
            expectNothingOutside(what);
        }
    }
}

TEST_F(HostileArchive, TheMessageNamesTheEntryAndTheReason) {
    const auto errors = expand(shapes[1], {file("../evil", "x")}).errors;
    EXPECT_NE(errors.find("\"../evil\": refused, the entry leads out of the destination"), std::string::npos) << errors;
}

TEST_F(HostileArchive, WritesNothingThroughALinkThatWasThereBefore) {
    for (const auto &shape : shapes) {
        fs::create_directories(out());
        fs::create_directory_symlink(jail_.path("outside"), out() / "l");
        for (const auto &items : {std::vector{file("l/canary", "x")}, std::vector{folder("l"), file("l/new", "x")}})
            EXPECT_EQ(expand(shape, items).status, 1) << shape.name;
        expectNothingOutside(shape.name);
    }
}

TEST_F(HostileArchive, ChangesNothingOfAFolderThatItWouldMergeInto) {
    for (const auto &shape : shapes) {
        writeFile(out() / "before", "old");
        EXPECT_EQ(expand(shape, {file("before", "1"), file("../evil", "x"), file("after", "2")}).status, 1);
        EXPECT_EQ(treeOf(out()), Tree{"before = old"}) << shape.name;
    }
}

TEST_F(HostileArchive, LinksThatLeaveAreMadeAndNothingIsWrittenThroughThem) {
    const auto outside = jail_.path("outside").string();
    for (const auto &shape : shapes) {
        const auto run = expand(shape, {link("a", outside), link("b", ".."), link("c/d", "../../x/../y")});
        EXPECT_EQ(run.status, 0) << shape.name << run.errors;
        EXPECT_EQ(treeOf(out()), (Tree{"a -> " + outside, "b -> ..", "c", "c/d -> ../../x/../y"})) << shape.name;
        EXPECT_EQ(expand(shape, {file("a/canary", "x")}).status, 1) << shape.name;
        expectNothingOutside(shape.name);
    }
}

TEST_F(HostileArchive, GivesEverythingItMayKeepItsOwnPermissions) {
    EXPECT_EQ(expand(shapes[0], {link("l", "d/e"), file("d/e", "x")}).status, 0);
    EXPECT_EQ(contentsOf(out() / "l"), "x");
    expectNothingOutside("a link inside");
}

TEST_F(HostileArchive, CutAtTwentyPlacesIsAnErrorWithoutADestination) {
    const std::vector<Item> items{folder("d"), file("d/a", std::string(3000, 'a')), link("d/l", "a"),
                                  file("d/b", std::string(3000, 'b')), file("c", "last")};
    for (const auto &shape : shapes) {
        const auto bytes = archiveOf(shape.format, shape.filter, items);
        for (std::size_t cut = 0; cut < 20; ++cut) {
            const auto length = bytes.size() * cut / 20;
            writeFile(jail_.path("archive"), bytes.substr(0, length));
            const auto run = ditto(shape.option);
            const auto what = std::string(shape.name) + " cut to " + std::to_string(length) + " bytes";
            EXPECT_EQ(run.status, 1) << what;
            EXPECT_FALSE(fs::exists(out())) << what;
            expectNothingOutside(what);
        }
    }
}

TEST_F(HostileArchive, ADamagedFileIsNoticedByItsChecksum) {
    std::string noise;
    std::mt19937 random(7);
    for (int i = 0; i < 5000; ++i)
        noise += static_cast<char>(random());
    for (const auto &shape : {shapes[0], shapes[2]}) {
        auto bytes = archiveOf(shape.format, shape.filter, {file("noise", noise)});
        bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
        writeFile(jail_.path("archive"), bytes);
        EXPECT_EQ(ditto(shape.option).status, 1) << shape.name;
        EXPECT_FALSE(fs::exists(out())) << shape.name;
    }
}

TEST_F(HostileArchive, AChecksumBehindTheLastEntrysBlockIsReadToo) {
    constexpr std::size_t block = std::size_t{32} * 1024; // what one read of the archive takes
    std::mt19937 random(8);
    std::string noise(3 * block, '\0');
    std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
    const auto packed = [&] { return archiveOf(Format::Cpio, Filter::Gzip, {file("noise", noise)}); };
    for (int tries = 0; tries < 20 && packed().size() % block != 4; ++tries)
        noise.resize(noise.size() - std::max<std::size_t>((packed().size() - 4) % block, 1));
    auto bytes = packed();
    ASSERT_EQ(bytes.size() % block, 4U) << "the last four bytes stand in a block of their own";
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    writeFile(jail_.path("archive"), bytes);
    EXPECT_EQ(ditto("-x").status, 1);
    EXPECT_FALSE(fs::exists(out()));
}

TEST_F(HostileArchive, ALinkIsNeverGivenASecondName) {
    // Deep in the tree the link leads to the destination, as a second name at the top it would lead out of it.
    const auto bytes = archiveOf(Format::Pax, Filter::None, {link("a/b/l", "../.."), hardLink("m", "a/b/l")});
    const std::string name = "Contents/Archive.pax.gz";
    writeFile(jail_.path("P.pkg/" + name), bytes);
    const auto run = runTool(installerTool(), {"-verboseR", "-pkg", jail_.path("P.pkg"), "-target", "/"},
                             {{"VANT_INSTALL_ROOT", jail_.path("root")}});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("m: refused"), std::string::npos) << run.errors;
    EXPECT_FALSE(fs::exists(jail_.path("root"))) << "nothing is left";
}

TEST_F(HostileArchive, AHardLinkToAFileOutsideIsRefused) {
    const auto canary = jail_.path("outside/canary").string();
    for (const auto &target : {canary, std::string("../outside/canary"), std::string("l/canary")}) {
        fs::create_directories(jail_.path("root"));
        fs::create_directory_symlink(jail_.path("outside"), jail_.path("root/l"));
        writeArchive(jail_.path("P.pkg/Contents/Archive.pax.gz"), Format::Pax, Filter::Gzip, {hardLink("h", target)});
        const auto run = runTool(installerTool(), {"-verboseR", "-pkg", jail_.path("P.pkg"), "-target", "/"},
                                 {{"VANT_INSTALL_ROOT", jail_.path("root")}});
        EXPECT_EQ(run.status, 1) << target;
        EXPECT_EQ(fs::hard_link_count(canary), 1U) << target;
        fs::remove_all(jail_.path("root"));
    }
}

} // namespace vant::test

#include "DittoFixture.hpp"
#include "InstallerFixture.hpp"

#include <zlib.h>

namespace fs = std::filesystem;

namespace vant::test {

using samples::file;

namespace {

constexpr long grantedKilobytes = 64L * 1024;

/// Deflates pieces one after another, so that a test can make far more bytes than it has memory for.
class Deflation {
public:
    explicit Deflation(int window) { deflateInit2(&stream_, 1, Z_DEFLATED, window, 9, Z_DEFAULT_STRATEGY); }
    ~Deflation() { deflateEnd(&stream_); }
    Deflation(const Deflation &) = delete;
    Deflation &operator=(const Deflation &) = delete;

    void add(const std::string &bytes, int flush = Z_NO_FLUSH) {
        stream_.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
        stream_.avail_in = static_cast<uInt>(bytes.size());
        char buffer[65536];
        do {
            stream_.next_out = reinterpret_cast<Bytef *>(buffer);
            stream_.avail_out = sizeof buffer;
            deflate(&stream_, flush);
            packed_.append(buffer, sizeof buffer - stream_.avail_out);
        } while (stream_.avail_out == 0);
        plain_ += bytes.size();
    }

    /// The whole stream, with `tail` at its end.
    const std::string &finish(const std::string &tail) {
        add(tail, Z_FINISH);
        return packed_;
    }

    [[nodiscard]] const std::string &packed() const { return packed_; }
    [[nodiscard]] std::uint64_t plainSize() const { return plain_; }

private:
    z_stream stream_{};
    std::string packed_;
    std::uint64_t plain_ = 0;
};

std::string big(std::uint64_t value, int count) {
    std::string bytes;
    for (int i = count - 1; i >= 0; --i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

/// A package whose table of contents unfolds to a hundred times its size and names two million files.
std::string endlessTable() {
    Deflation table(MAX_WBITS);
    std::string files;
    while (files.size() < 1'000'000)
        files += "<file id=\"1\"><name>abc</name><type>file</type></file>";
    table.add("<?xml version=\"1.0\"?><xar><toc>");
    for (int i = 0; i < 100; ++i)
        table.add(files);
    const auto &packed = table.finish("</toc></xar>");
    return "xar!" + big(28, 2) + big(1, 2) + big(packed.size(), 8) + big(table.plainSize(), 8) + big(0, 4) + packed;
}

/// A cpio's header for a file of that name and size.
std::string cpioHeader(const std::string &name, std::uint64_t size) {
    char header[77];
    std::snprintf(header, sizeof header, "070707%06o%06o%06o%06o%06o%06o%06o%011o%06zo%011llo", 0U, 1U, 0100644U, 0U,
                  0U, 1U, 0U, 0U, name.size() + 1, static_cast<unsigned long long>(size));
    return std::string(header, 76) + name + '\0';
}

/// A gzip-compressed cpio of one file of zeros.
std::string zeros(std::uint64_t mebibytes) {
    Deflation gzip(MAX_WBITS + 16);
    gzip.add(cpioHeader("zeros", mebibytes << 20U));
    const std::string mebibyte(std::size_t{1} << 20U, '\0');
    for (std::uint64_t i = 0; i < mebibytes; ++i)
        gzip.add(mebibyte);
    return gzip.finish(cpioHeader("TRAILER!!!", 0));
}

/// The same without its end, made in no time: one compressed piece over and over.
std::string endlessZeros(std::uint64_t mebibytes) {
    Deflation gzip(MAX_WBITS + 16);
    gzip.add(cpioHeader("zeros", mebibytes << 20U), Z_FULL_FLUSH);
    auto bytes = gzip.packed();
    gzip.add(std::string(std::size_t{1} << 20U, '\0'), Z_FULL_FLUSH);
    const auto piece = gzip.packed().substr(bytes.size());
    for (std::uint64_t i = 0; i < mebibytes; ++i)
        bytes += piece;
    return bytes;
}

std::string longPath(std::size_t length) {
    std::string path;
    while (path.size() + 101 < length)
        path += std::string(100, 'd') + '/';
    return path + std::string(length - path.size(), 'f');
}

} // namespace

TEST_F(Installer, ATableThatUnfoldsToMuchMoreTakesNoMoreThanSixtyFourMegabytes) {
    if (toolsAreInstrumented)
        GTEST_SKIP() << "a sanitizer takes the limit's place, and gigabytes of memory";
    writeFile(jail_.path("a.pkg"), endlessTable());
    const auto run = install(jail_.path("a.pkg"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output.find("%100"), std::string::npos);
    EXPECT_FALSE(fs::exists(root()));
    EXPECT_LT(run.peakKilobytes, grantedKilobytes);
}

TEST_F(Installer, ThreeThousandComponentsTakeOneLookAtTheTable) {
    std::vector<samples::ComponentFiles> components;
    for (int i = 0; i < 3000; ++i) {
        const auto name = std::to_string(i);
        components.push_back({name + ".pkg", "/", {file(name, name)}});
    }
    const auto run = install(writeProduct(jail_.path("p.pkg"), "P", components));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(treeOf(root()).size(), 3000U);
    if (toolsAreInstrumented)
        GTEST_SKIP() << "an instrumented tool's time and memory say nothing";
    EXPECT_LT(run.cpuSeconds, 10);
    EXPECT_LT(run.peakKilobytes, grantedKilobytes);
}

TEST_F(Ditto, RefusesAPathTooLongToBeListedOrRemoved) {
    for (const auto &shape : shapes) {
        const auto run = expand(shape, {file("short", "x"), file(longPath(4090), "x")});
        EXPECT_EQ(run.status, 1) << shape.name;
        EXPECT_NE(run.errors.find("its path is too long to be opened"), std::string::npos) << run.errors;
        EXPECT_FALSE(fs::exists(jail_.path("some"))) << shape.name;
        EXPECT_LT(run.errors.size(), 1000U) << "the name is cut in the message";
    }
    EXPECT_EQ(expand(shapes[0], {file(longPath(3900), "x")}).status, 0);
}

TEST_F(Ditto, ExpandsFarMoreThanItMayHoldInMemory) {
    writeFile(jail_.path("archive"), zeros(100));
    const auto run = ditto("-x");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(fs::file_size(out() / "zeros"), 100U << 20U);
    if (toolsAreInstrumented)
        GTEST_SKIP() << "an instrumented tool's memory says nothing";
    EXPECT_LT(run.peakKilobytes, grantedKilobytes);
}

TEST_F(Ditto, AskedToEndLeavesNothing) {
    writeFile(jail_.path("archive"), endlessZeros(4000));
    const auto run = runTool("/usr/bin/timeout", {"--preserve-status", "-s", "TERM", "0.3", dittoTool(), "-x",
                                                  jail_.path("archive"), out()});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("Interrupted"), std::string::npos) << run.errors;
    EXPECT_FALSE(fs::exists(jail_.path("some")));
}

} // namespace vant::test

#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "InstallerFixture.hpp"

#include <lzma.h>

namespace vant::test {

using samples::archiveOf;
using samples::file;
using samples::Filter;
using samples::Format;

namespace {

/// Bytes compressed by an encoder of the library, which `start` sets up.
template<class Start>
std::string compressed(const std::string &bytes, Start start) {
    lzma_stream stream = LZMA_STREAM_INIT;
    EXPECT_EQ(start(&stream), LZMA_OK);
    std::string packed(bytes.size() + 1000, '\0');
    stream.next_in = reinterpret_cast<const std::uint8_t *>(bytes.data());
    stream.avail_in = bytes.size();
    stream.next_out = reinterpret_cast<std::uint8_t *>(packed.data());
    stream.avail_out = packed.size();
    EXPECT_EQ(lzma_code(&stream, LZMA_FINISH), LZMA_STREAM_END);
    packed.resize(packed.size() - stream.avail_out);
    lzma_end(&stream);
    return packed;
}

std::string xzOf(const std::string &bytes, std::uint32_t preset = 1) {
    return compressed(bytes, [=](lzma_stream *stream) { return lzma_easy_encoder(stream, preset, LZMA_CHECK_CRC64); });
}

std::string lzmaOf(const std::string &bytes) {
    lzma_options_lzma options;
    lzma_lzma_preset(&options, 1);
    return compressed(bytes, [&](lzma_stream *stream) { return lzma_alone_encoder(stream, &options); });
}

std::string number(std::uint64_t value) {
    std::string bytes;
    for (unsigned shift = 64; shift > 0; shift -= 8)
        bytes += static_cast<char>(value >> (shift - 8));
    return bytes;
}

std::string chunk(std::uint64_t size, const std::string &data) {
    return number(size) + number(data.size()) + data;
}

constexpr std::uint64_t usualChunk = std::uint64_t{1} << 24;

/// The plain bytes, or the error in brackets.
std::string read(const std::string &bytes) {
    const Jail jail;
    tools::FileSource file(writeFile(jail.path("file"), bytes));
    std::string plain;
    try {
        tools::PlainBytes source(file);
        for (auto piece = source.source().next(); !piece.empty(); piece = source.source().next())
            plain.append(piece.data(), piece.size());
    } catch (const tools::ExpansionError &error) {
        return "(" + std::string(error.what()) + ")";
    }
    return plain;
}

} // namespace

TEST(Payload, XzAndLzmaGiveTheirBytesBack) {
    const std::string text(200'000, 'x');
    EXPECT_EQ(read(xzOf(text)), text);
    EXPECT_EQ(read(xzOf(text) + xzOf("more")), text + "more");
    EXPECT_EQ(read(lzmaOf(text)), text);
}

TEST(Payload, ADamagedOrShortXzIsNoticed) {
    auto damaged = xzOf("some text");
    damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 1);
    EXPECT_EQ(read(damaged), "(the compressed data is damaged)");
    EXPECT_EQ(read(xzOf("some text").substr(0, 40)), "(the compressed data ends too early)");
}

TEST(Payload, ADictionaryBeyondTheMemoryGrantedIsRefused) {
    EXPECT_EQ(read(xzOf("text", 8)), "text") << "32 MiB";
    EXPECT_EQ(read(xzOf("text", 9)), "(the compressed data needs too much memory to decompress)") << "64 MiB";
}

TEST(Payload, APbzxIsReadChunkByChunk) {
    const std::string first(100'000, 'a');
    const auto pbzx =
        "pbzx" + number(usualChunk) + chunk(first.size(), xzOf(first)) + chunk(5, "plain") + chunk(4, "last");
    EXPECT_EQ(read(pbzx), first + "plain" + "last");
    EXPECT_EQ(read("pbzx" + number(usualChunk)), "") << "no chunk at all";
}

TEST(Payload, AChunkThatIsNotWhatItsHeadSaysIsDamaged) {
    const auto head = "pbzx" + number(usualChunk);
    const std::string text(1000, 'a');
    for (const auto size : {text.size() - 1, text.size() + 1})
        EXPECT_EQ(read(head + chunk(size, xzOf(text))), "(the compressed data is damaged)") << size;
    EXPECT_EQ(read(head + chunk(0, "")), "(the compressed data is damaged)");
    EXPECT_EQ(read(head + chunk(std::uint64_t{1} << 40U, xzOf(text))), "(the compressed data is damaged)");
}

TEST(Payload, APbzxThatEndsTooEarlyIsNoticed) {
    const std::string text(1000, 'a');
    const auto whole = "pbzx" + number(usualChunk) + chunk(text.size(), xzOf(text));
    for (const auto kept : {std::size_t{11}, std::size_t{20}, std::size_t{40}, whole.size() - 1})
        EXPECT_TRUE(read(whole.substr(0, kept)).starts_with("(")) << kept;
    EXPECT_TRUE(read(whole + chunk(5, "shor")).starts_with("("));
}

TEST_F(Installer, UnpacksEveryCompressionOfAPayload) {
    const auto cpio = archiveOf(Format::Cpio, Filter::None, {file("./a", "content")});
    const auto pbzx = "pbzx" + number(usualChunk) + chunk(cpio.size(), xzOf(cpio));
    for (const auto &payload : {xzOf(cpio), lzmaOf(cpio), pbzx}) {
        const auto package = samples::writeArchive(jail_.path("a.pkg"), Format::Xar, Filter::None,
                                                   {file("PackageInfo", "<pkg-info/>"), file("Payload", payload)});
        EXPECT_EQ(install(package).status, 0);
        EXPECT_EQ(treeOf(root()), Tree{"a = content"});
        std::filesystem::remove_all(root());
    }
}

} // namespace vant::test

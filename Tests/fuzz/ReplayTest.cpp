#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

// Without the fuzzer, its targets are functions that get the seeds, whole and cut. A target ends the process when
// something does not hold.

namespace fs = std::filesystem;

using Target = int(const std::uint8_t *data, std::size_t size);
extern "C" {
Target PropertyListFuzz, TextFuzz, InstallerOutputFuzz, HttpFuzz, DecoderFuzz;
Target ZipFuzz, CpioFuzz, PackageFuzz, DistributionFuzz;
}

namespace {

void give(Target target, const std::string &bytes) {
    EXPECT_EQ(target(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()), 0);
}

void replay(Target target, const fs::path &seeds) {
    constexpr std::size_t cuts = 10;
    int files = 0;
    for (const auto &item : fs::directory_iterator(seeds)) {
        std::ifstream file(item.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        SCOPED_TRACE(item.path());
        for (std::size_t cut = 0; cut <= cuts; ++cut)
            give(target, bytes.substr(0, bytes.size() * cut / cuts));
        ++files;
    }
    EXPECT_GT(files, 0) << seeds;
}

const fs::path seedFolder = VANT_SEEDS;
const fs::path forms = VANT_FORMS;

} // namespace

TEST(FuzzSeeds, OfPropertyListsHold) {
    replay(PropertyListFuzz, seedFolder / "property_lists");
}

TEST(FuzzSeeds, OfTextsHold) {
    replay(TextFuzz, seedFolder / "texts");
}

TEST(FuzzSeeds, OfInstallersOutputHold) {
    replay(InstallerOutputFuzz, seedFolder / "output");
}

TEST(FuzzSeeds, OfHttpHold) {
    replay(HttpFuzz, seedFolder / "http");
}

TEST(FuzzSeeds, OfCodedBodiesHold) {
    replay(DecoderFuzz, seedFolder / "coded");
}

TEST(FuzzSeeds, OfArchivesHoldForEveryReader) {
    for (Target *target : {ZipFuzz, CpioFuzz, PackageFuzz, DistributionFuzz})
        replay(target, forms);
}

#include "DittoFixture.hpp"

#include <random>

namespace fs = std::filesystem;

namespace vant::test {

namespace {

const fs::path forms = VANT_FORMS;

struct Form {
    const char *file;
    const char *option; ///< of `ditto`; null for a package
};

constexpr Form everyForm[] = {
    {"infozip.zip", "-xk"},  {"stream.zip", "-xk"},  {"wide.zip", "-xk"},      {"odc.cpio.gz", "-x"},
    {"newc.cpio.bz2", "-x"}, {"sums.cpio.gz", "-x"}, {"gzip.pkg", nullptr},    {"xz.pkg", nullptr},
    {"lzma.pkg", nullptr},   {"pbzx.pkg", nullptr},  {"product.pkg", nullptr},
};

std::string numbers() {
    std::string text;
    for (int i = 1; i <= 90; ++i)
        text += std::to_string(i) + '\n';
    return text;
}

/// Archives and packages made by public tools, whole and damaged.
class RealForms : public testing::TestWithParam<Form> {
protected:
    ToolRun expand(const std::string &bytes) {
        writeFile(jail_.path("archive"), bytes);
        if (GetParam().option == nullptr)
            return runTool(installerTool(), {"-verboseR", "-pkg", jail_.path("archive"), "-target", "/"},
                           {{"VANT_INSTALL_ROOT", jail_.path("out")}, {"LC_ALL", "C"}});
        return runTool(dittoTool(), {GetParam().option, jail_.path("archive"), jail_.path("out")});
    }

    /// The exact tree with status 0, or status 1 with nothing left.
    void expectAllOrNothing(const std::string &bytes, const std::string &damage) {
        const auto run = expand(bytes);
        fs::remove(jail_.path("archive"));
        EXPECT_TRUE(run.status == 0 || run.status == 1) << damage << run.errors;
        if (run.status == 0)
            EXPECT_EQ(treeOf(jail_.path("out")), tree_) << damage;
        else
            EXPECT_EQ(treeOf(jail_.root()), Tree{}) << damage;
        EXPECT_EQ(run.errors.empty(), run.status == 0) << damage;
        fs::remove_all(jail_.path("out"));
    }

    const std::string bytes_ = contentsOf(forms / GetParam().file);
    const Tree tree_{"Folder", "Folder/b = the second file\n", "Folder/e\xCC\x81 = x", "Folder/link -> b",
                     "a = " + numbers()};
    Jail jail_;
};

/// Whether a bit tells a file's type in a zip's directory. Nothing in the format says it twice, and no sum covers it.
bool isTypeInDirectory(const std::string &bytes, std::size_t place, unsigned bit) {
    constexpr std::size_t typeInRecord = 41;
    return bit >= 4 && place >= typeInRecord && bytes.compare(place - typeInRecord, 4, "PK\x01\x02") == 0;
}

} // namespace

TEST_P(RealForms, GiveTheirExactTree) {
    const auto run = expand(bytes_);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(treeOf(jail_.path("out")), tree_);
}

TEST_P(RealForms, CutAtTwentyPlacesGiveTheirTreeOrNothing) {
    for (std::size_t cut = 0; cut < 20; ++cut)
        expectAllOrNothing(bytes_.substr(0, bytes_.size() * cut / 20), "cut at " + std::to_string(cut) + "/20");
}

TEST_P(RealForms, WithOneOfTwoHundredBitsFlippedGiveTheirTreeOrNothing) {
    std::mt19937 random(20201113);
    for (int round = 0; round < 200; ++round) {
        auto damaged = bytes_;
        const auto place = random() % bytes_.size();
        const auto bit = static_cast<unsigned>(random() % 8);
        if (isTypeInDirectory(bytes_, place, bit))
            continue;
        damaged[place] = static_cast<char>(damaged[place] ^ static_cast<char>(1U << bit));
        expectAllOrNothing(damaged, "flipped at " + std::to_string(place) + "." + std::to_string(bit));
    }
}

INSTANTIATE_TEST_SUITE_P(Every, RealForms, testing::ValuesIn(everyForm), [](const auto &info) {
    std::string name = info.param.file;
    std::erase_if(name, [](char character) { return character == '.'; });
    return name;
});

} // namespace vant::test

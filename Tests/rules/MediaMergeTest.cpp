#include "selection/MediaMerge.hpp"

#include <gtest/gtest.h>

namespace vant {
namespace {

using Paths = std::vector<std::optional<std::string>>;
using Components = std::vector<MediaComponent>;

const std::optional<std::string> secondDriver = "/media/Scan Two.pkg";

/// The additions as text, "path (kind)", "-" for what is absent.
std::vector<std::string> merged(const Components &media, const Paths &listed,
                                const std::optional<std::string> &second = secondDriver) {
    std::vector<std::string> texts;
    for (const MergedRecord &record : mergeMedia(media, listed, second))
        texts.push_back(record.installerPath.value_or("-") + " (" + record.componentName.value_or("-") + ")");
    return texts;
}

using Texts = std::vector<std::string>;

TEST(MediaMerge, AppendsTheSelectionFromItsEnd) {
    EXPECT_EQ(merged({{"/m/A.pkg", "Print Driver"}, {"/m/B.pkg", "Pressdeck"}}, {}),
              (Texts{"/m/B.pkg (Pressdeck)", "/m/A.pkg (Print Driver)"}));
}

TEST(MediaMerge, LeavesOutWhatTheWebHasUnderTheSameFileName) {
    EXPECT_EQ(merged({{"/media/Printer Driver.pkg", "Print Driver"}, {"/media/Fax.pkg", "PC fax Utility"}},
                     {"/tmp/Download/x/Fax.pkg.bak", "/tmp/Download/Driver/Printer Driver.pkg"}),
              (Texts{"/media/Fax.pkg (PC fax Utility)"}));
}

TEST(MediaMerge, TellsWhichComponentARecordIs) {
    const auto records =
        mergeMedia(Components{{"/m/A.pkg", "Print Driver"}, {"/m/B.pkg", "Scan Driver"}}, {}, secondDriver);
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].component, 1U);
    EXPECT_EQ(records[1].component, std::nullopt) << "the second scan driver is no component of the selection";
    EXPECT_EQ(records[2].component, 0U);
}

TEST(MediaMerge, ComparesFileNamesExactly) {
    EXPECT_EQ(merged({{"/m/fax.pkg", "k"}}, {"/w/Fax.pkg"}), (Texts{"/m/fax.pkg (k)"}));
    EXPECT_EQ(merged({{"/m/Fax.pkg/", "k"}}, {"/w/Fax.pkg"}), Texts{});
}

TEST(MediaMerge, KeepsTheLaterOfTwoOfOneFileName) {
    EXPECT_EQ(merged({{"/one/A.pkg", "first"}, {"/two/A.pkg", "second"}}, {}), (Texts{"/two/A.pkg (second)"}));
}

TEST(MediaMerge, FollowsEveryScanDriverWithTheSecondOne) {
    EXPECT_EQ(merged({{"/m/S.pkg", "Scan Driver"}, {"/m/T.pkg", "Scan Driver"}}, {}),
              (Texts{"/m/T.pkg (Scan Driver)", "/media/Scan Two.pkg (Scan Driver)", "/m/S.pkg (Scan Driver)",
                     "/media/Scan Two.pkg (Scan Driver)"}));
    EXPECT_EQ(merged({{"/m/S.pkg", "scan driver"}}, {}), (Texts{"/m/S.pkg (scan driver)"}));
}

TEST(MediaMerge, AddsNoSecondScanDriverForOneThatTheWebHas) {
    EXPECT_EQ(merged({{"/m/S.pkg", "Scan Driver"}}, {"/w/S.pkg"}), Texts{});
}

TEST(MediaMerge, ComparesEarlierComponentsWithTheSecondScanDriverToo) {
    EXPECT_EQ(merged({{"/m/Scan Two.pkg", "Print Driver"}, {"/m/S.pkg", "Scan Driver"}}, {}),
              (Texts{"/m/S.pkg (Scan Driver)", "/media/Scan Two.pkg (Scan Driver)"}));
}

TEST(MediaMerge, TakesAnAbsentSecondScanDriverForOneWithoutAPath) {
    EXPECT_EQ(merged({{"/m/S.pkg", "Scan Driver"}}, {}, std::nullopt),
              (Texts{"/m/S.pkg (Scan Driver)", "- (Scan Driver)"}));
}

TEST(MediaMerge, NeverTakesAbsentLocationsForTheSamePackage) {
    EXPECT_EQ(merged({{std::nullopt, "a"}, {std::nullopt, std::nullopt}}, {std::nullopt}), (Texts{"- (-)", "- (a)"}));
}

TEST(MediaMerge, AddsNothingForAnEmptySelection) {
    EXPECT_EQ(merged({}, {"/w/A.pkg"}), Texts{});
}

TEST(MediaMerge, HandlesAHundredThousandComponents) {
    Components media;
    Paths listed;
    for (int i = 0; i < 100'000; ++i) {
        media.push_back({"/m/" + std::to_string(i) + ".pkg", "kind"});
        if (i % 2 == 0)
            listed.push_back("/w/" + std::to_string(i) + ".pkg");
    }
    EXPECT_EQ(mergeMedia(media, listed, std::nullopt).size(), 50'000U);
}

} // namespace
} // namespace vant

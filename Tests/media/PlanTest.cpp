#include "plan/Collisions.hpp"

#include <gtest/gtest.h>

namespace vant::media {
namespace {

using Texts = std::vector<std::string>;

PlanInput mediaInput() {
    return {.media = {{"/m/Fax.pkg", "PC fax Utility"}, {"/m/Scan.pkg", "Scan Driver"}, {"/m/P.pkg", "Print Driver"}},
            .uninstaller = "/h/Uninstaller.pkg",
            .manual = "/h/Manual.pkg",
            .secondScanDriver = "/m/Scan 2.pkg",
            .manualWanted = true};
}

WebComponent archive(const std::string &name, const std::vector<std::string> &items) {
    return {"http://site/" + name, "Print Driver", items};
}

PlanInput webInput(const std::vector<WebComponent> &web) {
    PlanInput input = mediaInput();
    input.smartUpdate = true;
    input.web = web;
    return input;
}

Texts named(const Plan &plan) {
    Texts texts;
    for (const PlannedPackage &package : plan.packages)
        texts.push_back(packageName(package) + ": " + std::string(originName(package.origin)));
    return texts;
}

Texts dropped(const Plan &plan) {
    Texts texts;
    for (const DroppedPackage &each : plan.dropped)
        texts.push_back(packageName(each.package) + ": " + std::string(dropRuleName(each.rule)));
    return texts;
}

TEST(Plan, MediaViewAddsToTheSelectionAndOrdersIt) {
    const Plan plan = makePlan(mediaInput());
    EXPECT_EQ(plan.view, Flow::Media);
    EXPECT_EQ(plan.rows, 3U);
    EXPECT_EQ(named(plan), (Texts{"P.pkg: selection", "Scan.pkg: selection", "Scan 2.pkg: second scan driver",
                                  "Fax.pkg: selection", "Uninstaller.pkg: uninstaller", "Manual.pkg: manual"}));
}

TEST(Plan, WebErrorOrAnEmptySelectionTakesTheMediaView) {
    PlanInput input = webInput({archive("a.zip", {})});
    EXPECT_EQ(makePlan(input).view, Flow::Web);
    input.webError = true;
    EXPECT_EQ(makePlan(input).view, Flow::Media);
    EXPECT_EQ(makePlan(webInput({})).view, Flow::Media);
}

TEST(Plan, WebVersionOfAPackageWins) {
    const Plan plan = makePlan(webInput({archive("a.zip", {"x", "x/Fax.pkg"})}));
    EXPECT_EQ(dropped(plan), Texts{"Fax.pkg: web version wins"});
    EXPECT_EQ(named(plan),
              (Texts{"P.pkg: merged from media", "Scan.pkg: merged from media", "Scan 2.pkg: second scan driver",
                     "Fax.pkg: web", "Uninstaller.pkg: uninstaller", "Manual.pkg: manual"}));
    EXPECT_EQ(plan.packages[3].archive, "a.zip");
    EXPECT_EQ(plan.packages[3].path, "Vantrel/Download/a/x/Fax.pkg");
}

TEST(Plan, LegacyPackagesAndDuplicatesAreDropped) {
    const Plan plan = makePlan(webInput(
        {archive("a.zip", {"Scanmate.pkg", "Fax.pkg"}), archive("b/a.zip", {"Fax.pkg"}), archive("c.zip", {})}));
    EXPECT_EQ(dropped(plan), (Texts{"Fax.pkg: web version wins", "Fax.pkg: duplicate", "Scanmate.pkg: legacy"}));
}

TEST(Plan, ALastArchiveThatIsSetAsideInstallsNothing) {
    const WebComponent driver = archive("a.zip", {"Printer Driver.pkg"});
    const WebComponent stranger = archive("b.zip", {"Stranger.pkg"});
    EXPECT_TRUE(makePlan(webInput({driver, stranger})).endsWithSetAside);
    EXPECT_TRUE(makePlan(webInput({driver, stranger})).packages.empty());
    const Plan plan = makePlan(webInput({stranger, driver}));
    EXPECT_FALSE(plan.endsWithSetAside);
    EXPECT_EQ(plan.downloads[0].setAside, Texts{"Stranger.pkg"});
    EXPECT_EQ(packageName(plan.packages[1]), "Printer Driver.pkg");
}

TEST(Plan, WithoutDownloadsTheManualIsNotAdded) {
    const Plan plan = makePlan(webInput({archive("a.zip", {})}));
    EXPECT_EQ(named(plan),
              (Texts{"P.pkg: merged from media", "Scan.pkg: merged from media", "Scan 2.pkg: second scan driver",
                     "Fax.pkg: merged from media", "Uninstaller.pkg: uninstaller"}));
}

TEST(Plan, DownloadsAreNamedAsThePaneNamesThem) {
    const Plan plan = makePlan(webInput({archive("x/Driver.tar.zip", {}), archive("b.cpio.gz?v=1", {})}));
    EXPECT_EQ(plan.downloads[0].file, "Driver.tar.zip");
    EXPECT_EQ(plan.downloads[0].folder, "Driver.tar");
    EXPECT_EQ(plan.downloads[0].archive, ArchiveKind::Zip);
    EXPECT_EQ(plan.downloads[1].file, "b.cpio.gz?v=1");
    EXPECT_EQ(plan.downloads[1].archive, ArchiveKind::Cpio);
}

Texts collisions(const Plan &plan) {
    Texts texts;
    for (const Collision &collision : collisionsOf(plan))
        texts.push_back(std::string(collisionName(collision.kind)) + " " + collision.name + " " +
                        std::to_string(collision.count));
    return texts;
}

TEST(Collisions, PackagesOfOneNameAndPackagesWithoutAPathCollide) {
    PlanInput input = mediaInput();
    EXPECT_EQ(collisions(makePlan(input)), Texts{});
    input.media.push_back({"/other/Fax.pkg", "Pressdeck"});
    input.uninstaller = input.manual = std::nullopt;
    EXPECT_EQ(collisions(makePlan(input)), (Texts{"package name  2", "package name Fax.pkg 2"}));
}

TEST(Collisions, ArchivesShareAFileOrAFolder) {
    const Plan plan = makePlan(webInput({archive("a/x.zip", {}), archive("b/x.zip", {}), archive("x.cpio", {})}));
    EXPECT_EQ(collisions(plan), (Texts{"download file x.zip 2", "expanded folder x 2"}));
}

} // namespace
} // namespace vant::media

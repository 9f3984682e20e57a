#include "report/Options.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vant::media {
namespace {

Options parsed(const std::vector<std::string> &words) {
    return optionsOf(words);
}

TEST(Options, MediaAndOptionsStandInAnyOrder) {
    const Options options = parsed({"check", "--strict", "one", "--language", "GR", "two", "--json"});
    EXPECT_EQ(options.command, Options::Command::Check);
    EXPECT_EQ(options.media, (std::vector<std::string>{"one", "two"}));
    EXPECT_TRUE(options.isStrict && options.isJson);
    EXPECT_EQ(options.language, "GR");
}

TEST(Options, WhatFollowsTwoHyphensIsAFolder) {
    EXPECT_EQ(parsed({"check", "--", "--json"}).media, std::vector<std::string>{"--json"});
}

TEST(Options, FilesReplaceThoseOfTheMedia) {
    const Options options = parsed({"plan", "m", "--settings", "a", "--selection", "b", "--web", "c", "--site", "d"});
    EXPECT_EQ(options.request.settings, "a");
    EXPECT_EQ(options.request.selection, "b");
    EXPECT_EQ(options.request.webSelection, "c");
    EXPECT_EQ(options.request.site, "d");
}

TEST(Options, ASiteAloneHasOneSelection) {
    const Options options =
        parsed({"check", "--site", "http://a", "--selection", "b", "--wait", "7", "--largest", "2"});
    EXPECT_TRUE(options.media.empty() && options.request.isSiteVisited);
    EXPECT_EQ(options.request.webSelection, "b");
    EXPECT_EQ(options.request.selection, std::nullopt);
    EXPECT_EQ(options.limits.wait, 7);
    EXPECT_EQ(options.limits.largest, 2'000'000U);
}

TEST(Options, BesideMediaASelectionIsTheMediasOwn) {
    const Options options = parsed({"check", "--site", "http://a", "m", "--selection", "b", "--keep", "c"});
    EXPECT_EQ(options.request.selection, "b");
    EXPECT_EQ(options.request.webSelection, std::nullopt);
    EXPECT_EQ(options.keep, "c");
}

TEST(Options, APlanVisitsNoSite) {
    EXPECT_FALSE(parsed({"plan", "m", "--site", "http://a"}).request.isSiteVisited);
    EXPECT_THROW((void)parsed({"plan", "m", "--site", "http://a", "--keep", "k"}), std::invalid_argument);
}

TEST(Options, HelpNeedsNoMedia) {
    EXPECT_EQ(parsed({"plan", "--help"}).command, Options::Command::Help);
    EXPECT_EQ(parsed({"--version"}).command, Options::Command::Version);
}

TEST(Options, AnErrorOutranksWarnings) {
    const Findings error{{Severity::Error, "a", "", ""}};
    const Findings warning{{Severity::Warning, "b", "", ""}};
    const Findings note{{Severity::Note, "c", "", ""}};
    using Media = std::vector<Findings>;
    EXPECT_EQ(exitStatus(Media{warning, error}, true), 1);
    EXPECT_EQ(exitStatus(Media{warning, note}, true), 3);
    EXPECT_EQ(exitStatus(Media{warning, note}, false), 0);
    EXPECT_EQ(exitStatus(Media{note, {}}, true), 0);
}

} // namespace
} // namespace vant::media

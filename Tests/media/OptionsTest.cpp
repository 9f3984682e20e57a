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

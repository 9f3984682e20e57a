#include "report/Text.hpp"
#include "report/Json.hpp"

#include <gtest/gtest.h>

namespace vant::media {
namespace {

TEST(MediaText, ControlCharactersAreWrittenAsEscapes) {
    EXPECT_EQ(printable("a\x1b[31m\nb\x7f é"), "a\\x1B[31m\\x0Ab\\x7F é");
}

TEST(MediaText, FindingsAreColouredOnDemandAlone) {
    Report report;
    report.media = "m";
    report.findings = {{Severity::Error, "code", "subject", "message"}};
    EXPECT_EQ(findingsText(report, false), "error: subject: message [code]\nm: 1 error, 0 warnings, 0 notes\n");
    EXPECT_NE(findingsText(report, true).find("\x1b[31merror\x1b[0m"), std::string::npos);
}

TEST(MediaJson, BytesThatAreNoTextAreReplaced) {
    Report report;
    report.media = "a\xff";
    EXPECT_NE(json(std::vector{report}, "1").find("a\xEF\xBF\xBD"), std::string::npos);
}

} // namespace
} // namespace vant::media

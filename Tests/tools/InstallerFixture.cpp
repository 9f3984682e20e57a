#include "InstallerFixture.hpp"

#include <random>
#include <sstream>

namespace vant::test {

std::string Installer::noise(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes;
    while (bytes.size() < count)
        bytes += static_cast<char>(random());
    return bytes;
}

std::vector<std::string> Installer::linesOf(const std::string &output) {
    std::vector<std::string> lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<double> Installer::percentagesOf(const std::string &output) {
    constexpr std::string_view marker = "installer:%";
    std::vector<double> values;
    for (const auto &line : linesOf(output))
        if (line.starts_with(marker))
            values.push_back(std::stod(line.substr(marker.size())));
    return values;
}

void Installer::expectFailed(const ToolRun &run, const std::string &reason) {
    EXPECT_EQ(run.status, 1) << run.output << run.errors;
    const auto lines = linesOf(run.output);
    ASSERT_FALSE(lines.empty()) << run.errors;
    EXPECT_TRUE(lines.back().starts_with("installer: The install failed (") && lines.back().ends_with(")"))
        << lines.back();
    EXPECT_NE(lines.back().find(reason), std::string::npos) << lines.back();
    EXPECT_EQ(percentagesOf(run.output).back(), 97.75) << run.output;
    EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
}

} // namespace vant::test

#pragma once
#include "Jail.hpp"
#include "PackageBuilder.hpp"
#include "ToolRun.hpp"

#include <gtest/gtest.h>

namespace vant::test {

using Tree = std::vector<std::string>;

/// A jail with a root to install into, and the tool run on a package as the pane runs it.
class Installer : public testing::Test {
protected:
    ToolRun install(const std::filesystem::path &package, Reader reader = Reader::Reads) {
        return runTool(installerTool(), {"-verboseR", "-pkg", package, "-target", "/"},
                       {{"VANT_INSTALL_ROOT", root()}, {"LC_ALL", "C"}}, reader);
    }

    [[nodiscard]] std::filesystem::path root() const { return jail_.path("root"); }

    /// Bytes that do not compress, the same for the same seed.
    static std::string noise(std::size_t count, unsigned seed = 1);
    static std::vector<std::string> linesOf(const std::string &output);
    /// The values of the percent lines, in order.
    static std::vector<double> percentagesOf(const std::string &output);
    /// A failed run: status 1, no 100, one outcome line at the end that gives the reason.
    static void expectFailed(const ToolRun &run, const std::string &reason);

    Jail jail_;
};

} // namespace vant::test

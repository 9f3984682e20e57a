#include "read/ArchiveReading.hpp"

#include "GNUstep/files/SubpathWalk.hpp"
#include "read/TemporaryFolder.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace vant::media {
namespace {

/// Runs the tool and gives its words, none after a success. It watches over its own progress, so that it ends.
std::string runTool(const std::string &tool, const std::string &archive, bool isZip, const std::string &folder) {
    std::FILE *words = std::tmpfile();
    if (words == nullptr)
        return "no temporary file can be made";
    const pid_t child = fork();
    if (child == 0) {
        dup2(fileno(words), STDERR_FILENO);
        execl(tool.c_str(), "ditto", isZip ? "-xk" : "-x", archive.c_str(), folder.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::rewind(words);
    std::array<char, 1000> text{};
    const std::size_t length = std::fread(text.data(), 1, text.size(), words);
    std::fclose(words);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return "";
    return length > 0 ? std::string(text.data(), length) : "the tool ended with status " + std::to_string(status);
}

/// The first of the tool's lines, without the program's name.
std::string firstLine(const std::string &words) {
    const std::string line = words.substr(0, words.find('\n'));
    const std::string name = "ditto: ";
    return line.starts_with(name) ? line.substr(name.size()) : line;
}

} // namespace

ExpansionState readExpanded(const std::string &tool, const std::string &archive, bool isZip, const Choice &choice) {
    if (access(tool.c_str(), X_OK) != 0)
        throw std::runtime_error("there is no tool at " + tool);
    const TemporaryFolder folder;
    const std::string target = folder.path() + "/expanded";
    ExpansionState state;
    state.fault = firstLine(runTool(tool, archive, isZip, target));
    if (!state.fault.empty())
        return state;
    walkSubpaths(target, [&state](std::string_view item) {
        state.items.emplace_back(item);
        return true;
    });
    for (const std::string &item : choice(state.items))
        state.packages.push_back(readPackage(std::string(target).append("/").append(item)));
    return state;
}

} // namespace vant::media

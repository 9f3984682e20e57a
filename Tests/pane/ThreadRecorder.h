#pragma once
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace vant::test {

/// On which threads the pane's operations have run: "main", "installer" for any other.
using ThreadsByOperation = std::map<std::string, std::set<std::string>>;

/// Records from now on, for the rest of the process, every call of the pane's operations whose arguments and result fit
/// into general registers. Operations that take or give doubles or structures are left alone.
void recordThreads();

/// What has been recorded so far.
[[nodiscard]] ThreadsByOperation recordedThreads();

/// The thread that the headers in a folder give for each operation of the pane: "main", "installer" or "any"; empty for
/// one whose header names none.
[[nodiscard]] std::map<std::string, std::string> threadsInHeaders(const std::filesystem::path &folder);

} // namespace vant::test

#include "selection/SelectedSoftware.hpp"

#include <algorithm>
#include <array>

namespace vant {

namespace {

constexpr std::array<std::string_view, 6> reportedKinds{
    "Print Driver", "Scan Driver", "Pressdeck", "PC fax Utility", "Statora", "Docuvane",
};

} // namespace

std::vector<std::string_view> newlySelectedSoftware(std::span<const std::optional<std::string>> kinds,
                                                    std::span<const std::optional<std::string>> listed) {
    std::vector<std::string_view> added;
    for (const std::optional<std::string> &kind : kinds) {
        const auto *const reported = kind ? std::ranges::find(reportedKinds, *kind) : reportedKinds.end();
        if (reported == reportedKinds.end() || std::ranges::find(added, *reported) != added.end())
            continue;
        if (std::ranges::find(listed, std::optional<std::string>(*reported)) == listed.end())
            added.push_back(*reported);
    }
    return added;
}

} // namespace vant

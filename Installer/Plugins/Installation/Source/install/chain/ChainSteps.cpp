#include "install/chain/ChainSteps.hpp"

#include <array>
#include <cstdio>

namespace vant {

namespace {

constexpr const char *nextWebTrace = "Posting notification:[InstallNextSUComponent] cdInstallIndex[%d] "
                                     "mInstalledPackageDict[%d] mInstallCompArrayForSmartUpdate[%d]";
constexpr const char *nextMediaTrace = "Posting notification:[InstallNextCDComponent] cdInstallIndex[%d] "
                                       "mInstalledPackageDict[%d] mInstallCompArrayForCDUpdate[%d]";

std::string nextTrace(const char *format, const ChainState &state) {
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(), format, state.index, static_cast<int>(state.outcomes),
                  static_cast<int>(state.packages));
    return text.data();
}

ChainStep nextStep(Flow flow, const ChainState &state) {
    if (flow == Flow::Web)
        return {Announcement::NextWebPackage, nextTrace(nextWebTrace, state), true};
    return {Announcement::NextMediaPackage, nextTrace(nextMediaTrace, state), true};
}

ChainStep lastStep(Flow flow, const ChainState &state) {
    // Only the media flow tells a failed package: the web flow completes whatever the outcomes are.
    if (flow == Flow::Web)
        return {Announcement::WebComplete, "Posting notification:[SUInstallComplete]"};
    if (state.anyFailed)
        return {Announcement::MediaFailed, "Posting notification FAILED:[FindInstallFile3]"};
    return {Announcement::MediaComplete, "Posting notification:[CDInstallComplete]"};
}

} // namespace

bool isAtEnd(std::size_t outcomes, std::size_t packages) noexcept {
    return outcomes == packages;
}

ChainStep stepAfterPackage(Flow flow, const ChainState &state) {
    if (state.outcomes < state.packages)
        return nextStep(flow, state);
    if (isAtEnd(state.outcomes, state.packages))
        return lastStep(flow, state);
    return {};
}

UnpackEnding unpackEnding(const UnpackState &state) noexcept {
    // Not "less than": past the count, too, nothing follows any more.
    if (state.expanded != state.selected)
        return UnpackEnding::MoreToCome;
    if (!state.setAside)
        return UnpackEnding::Install;
    return state.desktopFolder ? UnpackEnding::ShowSetAside : UnpackEnding::SetAsideMissing;
}

} // namespace vant

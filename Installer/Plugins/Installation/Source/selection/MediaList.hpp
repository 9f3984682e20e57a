#pragma once
#include <optional>
#include <string>
#include <vector>

namespace vant {

/// A package of the media: where it lies and which kind of component it is. Absent values stay absent; the package's
/// installation fails on them later.
struct MediaComponent {
    std::optional<std::string> location;
    std::optional<std::string> kind;
    bool operator==(const MediaComponent &) const = default;
};

/// What the media list is made from.
struct MediaSources {
    std::vector<MediaComponent> selection;       ///< the user's choice, in the host's order
    std::optional<std::string> uninstaller;      ///< path in the host's bundle
    std::optional<std::string> secondScanDriver; ///< path that the user settings give
    std::optional<std::string> manual;           ///< path in the host's bundle
    bool manualWanted = false;                   ///< whether the media hold a manual that applies
};

/// What is to be installed beside the selection, in list order: the uninstaller always, one second scan driver for
/// every scan driver selected, and the manual at most once.
[[nodiscard]] std::vector<MediaComponent> addedMediaComponents(const MediaSources &sources);

} // namespace vant

#pragma once
#include "install/tasks/Archives.hpp"
#include "selection/Flow.hpp"
#include "selection/MediaList.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant::media {

/// A component of the web selection and what its archive holds.
struct WebComponent {
    std::optional<std::string> address;
    std::optional<std::string> kind;
    std::optional<std::vector<std::string>> items; ///< paths inside the archive; nothing when it was not looked into
};

/// What a run is decided by.
struct PlanInput {
    bool smartUpdate = false; ///< the switch of the settings, as the host leaves it
    bool webError = false;
    std::vector<MediaComponent> media; ///< with absolute locations
    std::vector<WebComponent> web;
    std::optional<std::string> uninstaller; ///< in the host's bundle
    std::optional<std::string> manual;      ///< in the host's bundle
    std::optional<std::string> secondScanDriver;
    bool manualWanted = false;
};

/// Why a package is in the list.
enum class Origin { Selection, SecondScanDriver, Manual, Uninstaller, Web, MergedFromMedia };
[[nodiscard]] std::string_view originName(Origin origin) noexcept;

struct PlannedPackage {
    std::optional<std::string> path;
    std::optional<std::string> component;
    Origin origin = Origin::Selection;
    std::string archive; ///< file name of the archive that it comes from; empty for one that comes from none
    bool operator==(const PlannedPackage &) const = default;
};

/// The name that the outcome of a package is kept under. Two packages of one name end the host.
[[nodiscard]] std::string packageName(const PlannedPackage &package);

/// The rule by which a package is left out of the list.
enum class DropRule { WebVersionWins, Duplicate, Legacy };
[[nodiscard]] std::string_view dropRuleName(DropRule rule) noexcept;

struct DroppedPackage {
    PlannedPackage package;
    DropRule rule = DropRule::Duplicate;
};

struct Download {
    std::optional<std::string> address;
    std::string file;   ///< name below the download folder
    std::string folder; ///< name of the folder that the archive is expanded into, below the same
    ArchiveKind archive = ArchiveKind::Zip;
    bool isContentKnown = false;
    std::vector<std::string> packages; ///< items that are installed, unless they are dropped
    std::vector<std::string> setAside; ///< what makes the pane set the folder aside on the desktop
};

/// What the pane would do, from first to last.
struct Plan {
    Flow view = Flow::Media;
    std::size_t rows = 0;
    std::vector<PlannedPackage> packages; ///< in the order in which they are installed
    std::vector<DroppedPackage> dropped;
    std::vector<Download> downloads; ///< web view: in the order of the selection
    bool endsWithSetAside = false;   ///< the last archive is set aside: its folder is shown, and nothing is installed
};

/// The plan, made by the pane's rules. Archives are taken to be expanded in the selection's order.
[[nodiscard]] Plan makePlan(const PlanInput &input);

} // namespace vant::media

#pragma once
#include "selection/Flow.hpp"

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace vant {

/// What happens to one item of an expanded archive.
enum class ExpandedAction {
    Skip,
    Install,            ///< becomes a web record
    InstallScanManager, ///< becomes a web record, and the scanner count is set
    SetAside,           ///< the whole folder goes to the desktop, unless it is there already
    SetAsideAtOnce,     ///< the whole folder goes to the desktop without a look at what is there
};

/// How a component is called in the status line.
struct DisplayName {
    enum class Source { Itself, StringKey, Text };
    Source source = Source::Itself;
    std::string_view text; ///< the key or the text; empty for a component that is called by its own name
    friend bool operator==(const DisplayName &, const DisplayName &) = default;
};

/// All that the pane knows of a name. A name is a kind ("Print Driver"), as the selections and the media records have
/// it, or a file name ("Printer Driver.pkg"), as the web records and the archives have it.
struct Component {
    std::string_view name;
    bool isRanked;       ///< has a place in the required order, which is the catalogue's
    bool isReported;     ///< a kind that the host is told of
    bool isLegacy;       ///< never installed by the web flow
    bool bringsProfiles; ///< for the reader: `colourProfileKeys` decide, and a test holds the two together
    std::optional<ExpandedAction> inArchive; ///< nothing: the extension decides, as for unknown names
    DisplayName web;                         ///< in the web flow's status line
    DisplayName media;                       ///< in the media flow's
    std::optional<Flow> printerDriverOf;     ///< the flow whose printer driver it is
};

/// Every known component, once; the ranked ones in the order in which they are installed.
[[nodiscard]] std::span<const Component> components() noexcept;

/// The component of a name, compared exactly; null for an unknown one.
[[nodiscard]] const Component *findComponent(std::string_view name) noexcept;

/// A package whose name contains one of these, in any letter case, calls for colour profiles. Packages on the media are
/// named as the vendor likes, so that the catalogue's names would not do.
inline constexpr std::array<std::string_view, 3> colourProfileKeys{"hueforge", "scan", "docuvane"};

/// The components that the pane adds to a list, or looks for in one.
inline constexpr std::string_view scanDriverKind = "Scan Driver";
inline constexpr std::string_view uninstallerKind = "Printer Software Uninstaller";
inline constexpr std::string_view manualKind = "User's Guide";
inline constexpr std::string_view uninstallerPackage = "Uninstaller.pkg";

} // namespace vant

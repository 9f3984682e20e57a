#pragma once
#include <string>
#include <string_view>

namespace vant {

/// Whether a package of this file name calls for colour profiles, in any letter case.
[[nodiscard]] bool needsColourProfiles(std::string_view packageName) noexcept;

/// Which of the two installer folders the media has.
struct MediaFolders {
    bool installFiles = false; ///< "/MAC_Installer/InstallFiles"
    bool macData = false;      ///< "/MAC_Installer/MAC_Data"
};

inline constexpr std::string_view installFilesFolder = "/MAC_Installer/InstallFiles";
inline constexpr std::string_view macDataFolder = "/MAC_Installer/MAC_Data";

/// The folder that the media's profiles lie in, ending in "/". On media with neither folder it is the root, without
/// one.
[[nodiscard]] std::string profileSourceFolder(std::string_view mediaRoot, MediaFolders present);

enum class ProfileFile { Profile, Archive, Other };

/// What a file of this path extension is to the profile installation; compared exactly.
[[nodiscard]] ProfileFile profileFileOfExtension(std::string_view extension) noexcept;

/// Where a staged profile goes.
struct ProfileTarget {
    std::string tested;      ///< the path whose existence forbids the copy
    std::string destination; ///< the path copied to
};

/// The target of the profile at a path relative to the staging folder. Profiles from subfolders land in the folder
/// itself.
[[nodiscard]] ProfileTarget profileTarget(std::string_view targetFolder, std::string_view relativePath);

} // namespace vant

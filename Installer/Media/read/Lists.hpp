#pragma once
#include "read/Value.hpp"
#include "selection/MediaList.hpp"
#include "shell/UserSettings.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vant::media {

/// What keeps the pane from reading a property list.
enum class ListFault { None, Missing, NotAFile, NotReadable, TooLarge, Unsafe, Malformed };

/// Larger lists are not read here. The pane would, on its main thread, for as long as it takes.
inline constexpr std::uintmax_t largestList = std::uintmax_t{16} << 20;

/// A property list as it was found.
struct ListFile {
    std::string path;
    ListFault fault = ListFault::None;
    std::string reason; ///< the reader's own words for a malformed list, with the line where it knows it
    Value root;
};

/// A selection file, as the pane takes it: locations stand as they are written.
struct SelectionFile {
    ListFile file;
    std::vector<MediaComponent> components;
};

/// A settings file, as the pane takes it. Without a file every switch is off.
struct SettingsFile {
    ListFile file;
    SettingsSwitches switches;
    bool manualsLookedFor = false;
    std::vector<std::string> models;
    std::optional<std::string> secondScanDriver;
};

/// The keys that the pane asks settings for.
struct SettingsKeys {
    std::string smartUpdate, webError, debug, withoutConnection, models, packagesInfo, scanDriver, location;
};

/// Reads the files by the pane's own reader. Never raises; never waits for a pipe. Main thread.
[[nodiscard]] SelectionFile readSelection(const std::string &path);
[[nodiscard]] SettingsFile readSettings(const std::string &path);
[[nodiscard]] SettingsKeys settingsKeys();

/// The text of a file, its encoding guessed as the pane does; nothing when it is no text or no regular file.
[[nodiscard]] std::optional<std::string> readText(const std::string &path);

/// The string under a key of a string table; nothing when there is no such table or key.
[[nodiscard]] std::optional<std::string> tableString(const std::string &table, const std::string &key);

} // namespace vant::media

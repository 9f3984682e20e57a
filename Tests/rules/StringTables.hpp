#pragma once
#include <map>
#include <string>
#include <vector>

namespace vant::test {

/// A string table of every language: FOLDER/<language>.lproj/NAME.strings.
struct TableName {
    const char *folder;
    const char *name;
};

inline constexpr TableName paneTable = {VANT_RESOURCES, "Localizable-Inst"};

/// A table as it stands in its file. Empty when there is no such file.
struct StringTable {
    std::string bytes;
    std::vector<std::string> keys; ///< in file order, repeated ones included
    std::map<std::string, std::string> strings;
};

[[nodiscard]] StringTable readTable(const TableName &which, const std::string &language);

/// The languages that a folder of resources has ("zh-Hans" for "zh-Hans.lproj"), ascending.
[[nodiscard]] std::vector<std::string> languageFolders(const char *resources);

/// What stands in the first list and not in the second, ascending.
[[nodiscard]] std::vector<std::string> lacking(std::vector<std::string> wanted, std::vector<std::string> present);

} // namespace vant::test

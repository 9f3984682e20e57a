#include "StringTables.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace fs = std::filesystem;

namespace vant::test {

StringTable readTable(const TableName &which, const std::string &language) {
    const fs::path file = fs::path(which.folder) / (language + ".lproj") / (std::string(which.name) + ".strings");
    std::ifstream in(file, std::ios::binary);
    StringTable table;
    table.bytes.assign(std::istreambuf_iterator<char>(in), {});
    static const std::regex entry(R"re("((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)"\s*;)re");
    for (std::sregex_iterator at(table.bytes.begin(), table.bytes.end(), entry), end; at != end; ++at) {
        table.keys.push_back((*at)[1]);
        table.strings[(*at)[1]] = (*at)[2];
    }
    return table;
}

std::vector<std::string> languageFolders(const char *resources) {
    std::vector<std::string> languages;
    for (const auto &entry : fs::directory_iterator(resources))
        if (entry.path().extension() == ".lproj")
            languages.push_back(entry.path().stem());
    std::ranges::sort(languages);
    return languages;
}

std::vector<std::string> lacking(std::vector<std::string> wanted, std::vector<std::string> present) {
    std::ranges::sort(wanted);
    std::ranges::sort(present);
    std::vector<std::string> difference;
    std::ranges::set_difference(wanted, present, std::back_inserter(difference));
    return difference;
}

} // namespace vant::test

#include "SampleFiles.hpp"

#include "Jail.hpp"

#include <algorithm>
#include <regex>

namespace fs = std::filesystem;

namespace vant::test {

std::map<std::string, std::size_t> manifestOf(const fs::path &file) {
    static const std::regex row(R"re(\{"name": "([^"]+)", "files": ([0-9]+)\})re");
    const auto text = contentsOf(file);
    std::map<std::string, std::size_t> counts;
    for (std::sregex_iterator match(text.begin(), text.end(), row), end; match != end; ++match)
        counts[(*match)[1]] = std::stoul((*match)[2]);
    return counts;
}

std::size_t filesBelow(const fs::path &folder) {
    const fs::recursive_directory_iterator items(folder);
    return static_cast<std::size_t>(
        std::count_if(begin(items), end(items), [](const auto &item) { return !item.is_directory(); }));
}

std::set<std::string> textsOf(const fs::path &plist) {
    static const std::regex text("<key>text</key>\\s*<string>([^<]*)</string>");
    const auto document = contentsOf(plist);
    std::set<std::string> texts;
    for (std::sregex_iterator match(document.begin(), document.end(), text), end; match != end; ++match)
        texts.insert((*match)[1]);
    return texts;
}

} // namespace vant::test

#include "Languages.hpp"

#include "base/Languages.hpp"

#include <string_view>

namespace vant::host {

std::vector<std::string> withLanguageFolder(std::vector<std::string> arguments, std::string_view option) {
    const Language *language = nullptr;
    for (std::size_t i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == "-Language")
            language = languageOfCode(arguments[i + 1]);
    }
    if (language) {
        arguments.emplace_back(option);
        arguments.push_back("(\"" + std::string(language->folder) + "\")");
    }
    return arguments;
}

} // namespace vant::host

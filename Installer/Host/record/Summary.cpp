#include "Summary.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

namespace vant::host {

namespace fs = std::filesystem;

static std::string escaped(char c) {
    switch (c) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    if (static_cast<unsigned char>(c) >= 0x20)
        return {c};
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(c));
    return code.data();
}

std::string jsonQuoted(std::string_view text) {
    std::string literal = "\"";
    for (const char c : text)
        literal += escaped(c);
    return literal + '"';
}

/// A JSON array with one element a line; `literal` makes an element's text.
template<class Range, class Literal>
static std::string jsonLines(const Range &range, Literal literal) {
    std::string text;
    for (const auto &element : range)
        text += (text.empty() ? "\n    " : ",\n    ") + literal(element);
    return text.empty() ? "[]" : "[" + text + "\n  ]";
}

/// A JSON array on one line.
static std::string jsonList(const std::vector<std::string> &texts) {
    std::string list;
    for (const std::string &text : texts)
        list += (list.empty() ? "" : ", ") + jsonQuoted(text);
    return "[" + list + "]";
}

static std::string json(const Package &package) {
    return R"({"name": )" + jsonQuoted(package.name) + R"(, "component": )" + jsonQuoted(package.component) +
           R"(, "path": )" + jsonQuoted(package.path) + R"(, "outcome": )" +
           (package.outcome ? jsonQuoted(*package.outcome) : "null") + R"(, "installed": )" +
           (isInstalled(package) ? "true" : "false") + R"(, "exitStatus": )" +
           (package.exitStatus ? std::to_string(*package.exitStatus) : "null") + R"(, "messages": )" +
           jsonList(package.messages) + R"(, "installedFiles": )" + std::to_string(package.installedFiles) + "}";
}

static std::string json(const ExpansionFailure &failure) {
    return R"({"archive": )" + jsonQuoted(failure.archive) + R"(, "words": )" + jsonQuoted(failure.words) + "}";
}

static std::string decimal(double seconds) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%.3f", seconds);
    return text.data();
}

bool isInstalled(const Package &package) {
    if (!package.outcome || *package.outcome == "Failed")
        return false;
    return package.exitStatus ? *package.exitStatus == 0 : package.messages.empty();
}

int exitStatus(const Summary &summary) {
    if (!summary.continued)
        return 1;
    const bool whole =
        summary.notExpanded.empty() && summary.setAside.empty() && std::ranges::all_of(summary.packages, isInstalled);
    return whole ? 0 : 3;
}

std::string json(const Summary &summary) {
    const auto packageLiteral = [](const Package &package) { return json(package); };
    const auto failureLiteral = [](const ExpansionFailure &failure) { return json(failure); };
    const std::array<std::pair<const char *, std::string>, 14> fields = {{
        {"version", jsonQuoted(summary.version)},
        {"flow", jsonQuoted(summary.flow)},
        {"language", jsonQuoted(summary.language)},
        {"continued", summary.continued ? "true" : "false"},
        {"valid", jsonQuoted(summary.valid)},
        {"status", jsonQuoted(summary.status)},
        {"reason", jsonQuoted(summary.reason)},
        {"errorCode", std::to_string(summary.errorCode)},
        {"exitStatus", std::to_string(exitStatus(summary))},
        {"packages", jsonLines(summary.packages, packageLiteral)},
        {"notExpanded", jsonLines(summary.notExpanded, failureLiteral)},
        {"setAside", jsonLines(summary.setAside, jsonQuoted)},
        {"installedFiles", std::to_string(summary.installedFiles)},
        {"seconds", decimal(summary.seconds)},
    }};
    std::string text;
    for (const auto &[key, literal] : fields)
        text += (text.empty() ? "{\n  " : ",\n  ") + jsonQuoted(key) + ": " + literal;
    return text + "\n}\n";
}

std::size_t fileCount(const std::string &folder) {
    std::error_code error;
    std::size_t count = 0;
    for (fs::recursive_directory_iterator item(folder, error), end; !error && item != end; item.increment(error))
        count += item->is_symlink(error) || !item->is_directory(error) ? 1 : 0;
    return count;
}

std::vector<std::string> folderNames(const std::string &folder) {
    std::error_code error;
    std::vector<std::string> names;
    for (fs::directory_iterator item(folder, error), end; !error && item != end; item.increment(error)) {
        if (item->is_directory(error))
            names.push_back(item->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace vant::host

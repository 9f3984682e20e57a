#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vant::media {

enum class Severity {
    Error,   ///< something would not be installed, or the host would end
    Warning, ///< probably not meant
    Note,
};
[[nodiscard]] std::string_view severityName(Severity severity) noexcept;

/// One thing found.
struct Finding {
    Severity severity = Severity::Note;
    std::string code;    ///< a word that stays the same from version to version: "package-missing"
    std::string subject; ///< the file, folder or name that it is about
    std::string message; ///< one sentence
};

using Findings = std::vector<Finding>;

} // namespace vant::media

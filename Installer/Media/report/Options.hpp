#pragma once
#include "check/Finding.hpp"
#include "read/Survey.hpp"
#include "site/Fetch.hpp"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vant::media {

/// What the command line asks for.
struct Options {
    enum class Command { Plan, Check, Help, Version };
    Command command = Command::Help;
    std::vector<std::string> media;  ///< empty: a site alone
    Request request;                 ///< for each of the media
    std::optional<std::string> keep; ///< folder for what is fetched from a site
    FetchLimits limits;
    std::string language = "EN";
    bool isJson = false;
    bool isStrict = false;
};

/// The options of the arguments behind the program's name; throws std::invalid_argument with a sentence for the user.
[[nodiscard]] Options optionsOf(std::span<const std::string> arguments);

/// The text of --help.
[[nodiscard]] std::string helpText();

/// The exit status for what was found in all media: 1 for an error, 3 for a warning when `isStrict`, else 0.
[[nodiscard]] int exitStatus(std::span<const Findings> findings, bool isStrict) noexcept;

} // namespace vant::media

#pragma once
#include "check/Finding.hpp"
#include "read/Survey.hpp"
#include "site/Visit.hpp"

#include <optional>
#include <string>
#include <vector>

namespace vant::media {

/// A package as it is shown to a reader.
struct PackageLine {
    PlannedPackage package;
    std::string status; ///< what the window says while it installs; empty when the string tables were not found
    bool bringsProfiles = false;
};

/// The colour profiles that the first package that calls for them brings.
struct ProfileLine {
    std::string folder;             ///< empty when there is none
    std::string archive;            ///< the zip that is expanded, the last by name; empty for none
    std::vector<std::string> files; ///< names as they are copied
};

/// The first information page in one language, and for each item the set that it is from: "GTA", "GTA_Default", or
/// "built in".
struct SlideLine {
    std::string language;
    std::string image;
    std::string title;
    std::string message;
    std::string titleText;   ///< empty for a built-in one
    std::string messageText; ///< empty for a built-in one
};

/// All that is told of one media folder.
struct Report {
    std::string media; ///< the folder; the site's address when there is none
    Plan plan;
    std::vector<PackageLine> packages;
    ProfileLine profiles;
    std::vector<SlideLine> slides;
    Findings findings;        ///< of a check
    std::optional<Site> site; ///< that was visited
};

/// Puts together what is told of a plan, in a language by its code. Reads the string tables and lists the profiles'
/// archive. Main thread.
[[nodiscard]] Report describe(const Survey &found, const Plan &plan, const std::string &tables,
                              const std::string &language);

} // namespace vant::media

#pragma once
#include "plan/Plan.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace vant::media {

/// Something in an expanded archive that looks as if it were to be installed, and what becomes of it.
struct Content {
    enum class Outcome {
        Installed,
        PassedOver, ///< the pane does nothing with it
        SetAside,   ///< the whole archive's folder is put on the desktop for it
        Dropped,    ///< installed, but for a rule that takes it off the list again
    };
    std::string item; ///< path in the archive
    Outcome outcome = Outcome::PassedOver;
    std::string reason; ///< a clause; empty for what is installed
    std::string inside; ///< path of the package or application that holds it; empty when none does
};
[[nodiscard]] std::string_view outcomeName(Content::Outcome outcome) noexcept;

/// Everything among an archive's items that has the ending of a package or application, in any letter case, or a name
/// that the pane knows. By the pane's rule for each; nothing is dropped yet.
[[nodiscard]] std::vector<Content> contentsOf(const std::vector<std::string> &items);

/// The items that are installed, unless they are dropped.
[[nodiscard]] std::vector<std::string> packagesAmong(const std::vector<std::string> &items);

/// The contents of an archive of a plan, with what the plan drops.
[[nodiscard]] std::vector<Content> contentsOf(const std::vector<std::string> &items, const Plan &plan,
                                              const std::string &archive);

/// The file names that are installed from an archive, in the order of the catalogue: "Printer Driver.pkg", …
[[nodiscard]] std::vector<std::string> installedNames();

} // namespace vant::media

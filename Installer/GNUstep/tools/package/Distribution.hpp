#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vant::tools {

/// What a product's "Distribution" says of an installation that nobody customizes.
struct Distribution {
    /// A component package that is to be installed.
    struct Selected {
        std::string file;     ///< folder of the component in the product ("Some Name.pkg")
        std::string location; ///< where a choice wants it instead of the component's own place, empty as a rule
    };

    std::string title;
    std::vector<Selected> selected; ///< in the order of the choices, each file once
};

/// Reads the choices in their outline and leaves out the packages of those that aren't selected at the start, as the
/// platform's tool does. The versions of the system that the package allows are not looked at: the volume stands for
/// one of them. Throws ExpansionError when the text is no distribution, when its own check refuses the installation, or
/// when what it asks can't be answered here.
[[nodiscard]] Distribution readDistribution(std::string_view text);

} // namespace vant::tools

#include "Ending.hpp"

namespace vant::host {

static constexpr double patience = 1.0;

std::optional<Ending> ending(const Signs &signs) {
    if (signs.continued)
        return Ending{true, "the pane told the host to go on"};
    if (signs.refused)
        return Ending{false, "administrator rights were refused, nothing was installed"};
    if (signs.packageFailed)
        return Ending{false, "a package failed"};
    if (signs.cancelled)
        return Ending{false, "the user ended the installation"};
    if (signs.secondsSinceButton2 && *signs.secondsSinceButton2 >= patience)
        return Ending{false, "components were set aside on the desktop for the user, nothing was installed"};
    if (signs.seconds >= signs.timeOut)
        return Ending{false, "no end after " + std::to_string(static_cast<long>(signs.timeOut)) + " s"};
    return std::nullopt;
}

} // namespace vant::host

#include "selection/InstallOrder.hpp"

#include <algorithm>
#include <array>

namespace vant {

namespace {

/// Drivers first, then the tools, then manuals and the uninstaller. Kinds of the media list and package files of the
/// web list stand in one table, so that it serves both.
constexpr std::array<std::string_view, 12> requiredOrder{
    "Print Driver",        //
    "Printer Driver.pkg",  //
    "Scan Driver",         //
    "Hueforge.pkg",        //
    "Scanwick.pkg",        //
    "Pressdeck",           //
    "Printer Manager.pkg", //
    "Docuvane",            //
    "PC fax Utility",      //
    "Fax.pkg",             //
    "Manual.pkg",          //
    "Printer Software Uninstaller",
};

/// The name's place in the required order; unknown and absent names share the place behind all others.
std::size_t place(const std::optional<std::string> &name) noexcept {
    const auto *const known = name ? std::ranges::find(requiredOrder, *name) : requiredOrder.end();
    return static_cast<std::size_t>(known - requiredOrder.begin());
}

} // namespace

RecordName recordName(std::string_view installType) noexcept {
    if (installType == "CD")
        return RecordName::type;
    return installType == "SmartUpdate" ? RecordName::componentName : RecordName::none;
}

std::vector<std::size_t> installOrder(std::span<const std::optional<std::string>> names) {
    std::array<std::vector<std::size_t>, requiredOrder.size() + 1> places;
    for (std::size_t i = 0; i < names.size(); ++i)
        places.at(place(names[i])).push_back(i);
    std::vector<std::size_t> order;
    order.reserve(names.size());
    for (const std::vector<std::size_t> &positions : places)
        order.insert(order.end(), positions.begin(), positions.end());
    return order;
}

} // namespace vant

#include "install/status/ComponentName.hpp"

#include <algorithm>
#include <array>

namespace vant {

namespace {

struct Row {
    std::string_view componentName;
    DisplayName web;
    DisplayName media;
};

constexpr DisplayName itself{};

constexpr DisplayName key(std::string_view name) noexcept {
    return {DisplayName::Source::StringKey, name};
}

constexpr DisplayName literal(std::string_view words) noexcept {
    return {DisplayName::Source::Text, words};
}

// clang-format off
constexpr std::array rows{
    //  component name         web flow                    media flow
    Row{"Printer Driver.pkg",  key("PrinterComponent"),    itself},
    Row{"Print Driver",        key("PrinterComponent"),    key("PrinterComponent")},
    Row{"Hueforge.pkg",        key("ScannerComponent"),    itself},
    Row{"Scanwick.pkg",        key("ScannerComponent"),    itself},
    Row{"Scan Driver",         key("ScannerComponent"),    key("ScannerComponent")},
    Row{"Printer Manager.pkg", key("PressdeckComponent"),  itself},
    Row{"Pressdeck",           key("PressdeckComponent"),  key("PressdeckComponent")},
    Row{"Fax.pkg",             key("PCFAXComponent"),      itself},
    Row{"PC fax Utility",      key("PCFAXComponent"),      key("PCFAXComponent")},
    Row{"Scan Manager.pkg",    literal("Scan Manager"),    itself},
    Row{"Scanmate.pkg",        literal("Scanmate"),        itself},
};
// clang-format on

} // namespace

DisplayName displayNameOf(Flow flow, std::string_view componentName) noexcept {
    const auto *const row = std::find_if(rows.begin(), rows.end(),
                                         [componentName](const Row &r) { return r.componentName == componentName; });
    if (row == rows.end())
        return itself;
    return flow == Flow::Web ? row->web : row->media;
}

bool isPrinterDriver(Flow flow, std::string_view componentName) noexcept {
    return componentName == (flow == Flow::Web ? "Printer Driver.pkg" : "Print Driver");
}

} // namespace vant

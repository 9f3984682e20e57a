#include "selection/ComponentCatalogue.hpp"

#include <algorithm>

namespace vant {
namespace {

using enum ExpandedAction;

constexpr bool yes = true;
constexpr bool no = false;
constexpr std::nullopt_t none = std::nullopt;

constexpr DisplayName itself{};
constexpr DisplayName printer{DisplayName::Source::StringKey, "PrinterComponent"};
constexpr DisplayName scanner{DisplayName::Source::StringKey, "ScannerComponent"};
constexpr DisplayName pressdeck{DisplayName::Source::StringKey, "PressdeckComponent"};
constexpr DisplayName fax{DisplayName::Source::StringKey, "PCFAXComponent"};

constexpr DisplayName text(std::string_view words) noexcept {
    return {DisplayName::Source::Text, words};
}

/// Found in archives, and never installed.
constexpr Component item(std::string_view name, ExpandedAction action) noexcept {
    return {name, no, no, no, no, action, itself, itself, none};
}

// The media flow meets kinds only, so there every file name is shown as it is.
// clang-format off
constexpr Component catalogue[] = {
    // Drivers first, then the tools, then manuals and the uninstaller.
    // name                 ranked reported legacy ICC  in archive          web flow              media flow driver of
    {"Print Driver",         yes,   yes,     no,    no,   none,               printer,              printer,   Flow::Media},
    {"Printer Driver.pkg",   yes,   no,      no,    no,   Install,            printer,              itself,    Flow::Web},
    {scanDriverKind,         yes,   yes,     no,    yes,  none,               scanner,              scanner,   none},
    {"Hueforge.pkg",         yes,   no,      no,    yes,  Install,            scanner,              itself,    none},
    {"Scanwick.pkg",         yes,   no,      no,    yes,  Install,            scanner,              itself,    none},
    {"Pressdeck",            yes,   yes,     no,    no,   none,               pressdeck,            pressdeck, none},
    {"Printer Manager.pkg",  yes,   no,      no,    no,   Install,            pressdeck,            itself,    none},
    // A product's name, the same in every language. Its package has no fixed name: one from the web is set aside.
    {"Docuvane",             yes,   yes,     no,    yes,  none,               itself,               itself,    none},
    {"PC fax Utility",       yes,   yes,     no,    no,   none,               fax,                  fax,       none},
    {"Fax.pkg",              yes,   no,      no,    no,   Install,            fax,                  itself,    none},
    // For a record named after the file; the pane names its own record of the manual after the kind, which has no rank.
    // One in an archive is set aside, because the host has its own.
    {"Manual.pkg",           yes,   no,      no,    no,   none,               itself,               itself,    none},
    // Added by the pane, not chosen by the user, so there is nothing to report.
    {uninstallerKind,        yes,   no,      no,    no,   none,               itself,               itself,    none},

    // Behind all others, as they come.
    // Only the host knows it: reported, but without a place, words in the string tables, or a package of the web.
    {"Statora",              no,    yes,     no,    no,   none,               itself,               itself,    none},
    // Comes behind the uninstaller, which hosts rely on. Added by the pane, like the uninstaller.
    {manualKind,             no,    no,      no,    no,   none,               itself,               itself,    none},
    // Archives still bring the two; the web flow drops their records just before it installs, hence no rank.
    {"Scan Manager.pkg",     no,    no,      yes,   yes,  InstallScanManager, text("Scan Manager"), itself,    none},
    {"Scanmate.pkg",         no,    no,      yes,   yes,  Install,            text("Scanmate"),     itself,    none},

    // The host brings an uninstaller of its own; the applications come beside packages that are installed.
    item(uninstallerPackage,       Skip),
    item("Quorvel Scanner.app",    Skip),
    item("Net Setter.app",         Skip),
    item("NetSetter.app",          Skip),
    item("Quorvel RXM2 Installer", SetAsideAtOnce),
};
// clang-format on

} // namespace

std::span<const Component> components() noexcept {
    return catalogue;
}

const Component *findComponent(std::string_view name) noexcept {
    const auto *const found = std::ranges::find(catalogue, name, &Component::name);
    return found == std::end(catalogue) ? nullptr : found;
}

} // namespace vant

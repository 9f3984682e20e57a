#include "install/chain/ExpandedItem.hpp"

#include "base/Paths.hpp"

namespace vant {
namespace {

struct Row {
    std::string_view extension;
    std::string_view name;
    ExpandedAction action;
    ExpandedPath path;
};

using enum ExpandedAction;
using enum ExpandedPath;

// An item is never without a name, so the empty name can stand for any.
constexpr std::string_view anyName;

// The first row that matches decides. The uninstaller of a download is passed over for the host's own, and a
// metapackage only names packages that the tool would have to find elsewhere.
// clang-format off
constexpr Row rows[] = {
    {"pkg",  "Scan Manager.pkg",       InstallScanManager, TildeExpanded},
    {"pkg",  "Printer Manager.pkg",    Install,            TildeExpanded},
    {"pkg",  "Printer Driver.pkg",     Install,            TildeExpanded},
    {"pkg",  "Hueforge.pkg",           Install,            TildeExpanded},
    {"pkg",  "Scanmate.pkg",           Install,            TildeExpanded},
    {"pkg",  "Scanwick.pkg",           Install,            TildeExpanded},
    {"pkg",  "Fax.pkg",                Install,            TildeExpanded},
    {"pkg",  "Uninstaller.pkg",        Skip,               TildeExpanded},
    {"pkg",  anyName,                  SetAside,           TildeExpanded},
    {"mpkg", anyName,                  SetAside,           AsItIs},
    {"app",  "Quorvel Scanner.app",    Skip,               TildeExpanded},
    {"app",  "Net Setter.app",         Skip,               TildeExpanded},
    {"app",  "NetSetter.app",          Skip,               TildeExpanded},
    {"app",  anyName,                  SetAside,           TildeExpanded},
    {"",     "Quorvel RXM2 Installer", SetAsideAtOnce,     TildeExpanded},
    {"",     anyName,                  Skip,               TildeExpanded},
};
// clang-format on

} // namespace

ExpandedItem classifyExpandedItem(std::string_view itemPath) noexcept {
    const std::string_view extension = pathExtension(itemPath);
    const std::string_view name = lastPathComponent(itemPath);
    for (const Row &row : rows) {
        if (row.extension == extension && (row.name == name || row.name == anyName))
            return {row.action, row.path};
    }
    return {Skip, NotExamined};
}

} // namespace vant

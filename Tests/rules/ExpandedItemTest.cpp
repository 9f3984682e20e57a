#include "install/chain/ExpandedItem.hpp"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace vant {

void PrintTo(const ExpandedItem &item, std::ostream *stream) {
    *stream << "action " << static_cast<int>(item.action) << ", path " << static_cast<int>(item.path);
}

namespace {

using enum ExpandedAction;
using enum ExpandedPath;

struct Row {
    std::string name;
    ExpandedAction action;
    ExpandedPath path;
};

const Row rows[] = {
    {"Scan Manager.pkg", InstallScanManager, TildeExpanded},
    {"Printer Manager.pkg", Install, TildeExpanded},
    {"Printer Driver.pkg", Install, TildeExpanded},
    {"Hueforge.pkg", Install, TildeExpanded},
    {"Scanmate.pkg", Install, TildeExpanded},
    {"Scanwick.pkg", Install, TildeExpanded},
    {"Fax.pkg", Install, TildeExpanded},
    {"Uninstaller.pkg", Skip, TildeExpanded},
    {"Other.pkg", SetAside, TildeExpanded},
    {"printer driver.pkg", SetAside, TildeExpanded},
    {"Fax .pkg", SetAside, TildeExpanded},
    {"All.mpkg", SetAside, AsItIs},
    {"Fax.mpkg", SetAside, AsItIs},
    {"Quorvel Scanner.app", Skip, TildeExpanded},
    {"Net Setter.app", Skip, TildeExpanded},
    {"NetSetter.app", Skip, TildeExpanded},
    {"Other.app", SetAside, TildeExpanded},
    {"Quorvel RXM2 Installer", SetAsideAtOnce, TildeExpanded},
    {"Quorvel RXM2 installer", Skip, TildeExpanded},
    {"README", Skip, TildeExpanded},
    {".pkg", Skip, TildeExpanded},
    {"ends in a stop.", Skip, TildeExpanded},
    {"Fax.PKG", Skip, NotExamined},
    {"Other.App", Skip, NotExamined},
    {"read me.txt", Skip, NotExamined},
    {"Fax.pkg.gz", Skip, NotExamined},
    {"Quorvel RXM2 Installer.dmg", Skip, NotExamined},
};

TEST(ExpandedItem, IsClassifiedByExtensionAndFileName) {
    for (const Row &row : rows)
        EXPECT_EQ(classifyExpandedItem(row.name), (ExpandedItem{row.action, row.path})) << row.name;
}

TEST(ExpandedItem, IsClassifiedAlikeAtAnyDepth) {
    for (const Row &row : rows)
        EXPECT_EQ(classifyExpandedItem("Other.app/Contents.pkg/" + row.name), (ExpandedItem{row.action, row.path}))
            << row.name;
}

} // namespace
} // namespace vant

#include "install/status/ComponentName.hpp"

#include <gtest/gtest.h>

using vant::DisplayName;
using vant::displayName;
using vant::Flow;
using vant::isPrinterDriver;

namespace {

using Source = DisplayName::Source;

struct NameCase {
    std::string_view name;
    DisplayName web;
    DisplayName media;
};

// clang-format off
constexpr NameCase nameCases[] = {
    {"Printer Driver.pkg",  {Source::StringKey, "PrinterComponent"},   {}},
    {"Print Driver",        {Source::StringKey, "PrinterComponent"},   {Source::StringKey, "PrinterComponent"}},
    {"Hueforge.pkg",        {Source::StringKey, "ScannerComponent"},   {}},
    {"Scanwick.pkg",        {Source::StringKey, "ScannerComponent"},   {}},
    {"Scan Driver",         {Source::StringKey, "ScannerComponent"},   {Source::StringKey, "ScannerComponent"}},
    {"Printer Manager.pkg", {Source::StringKey, "PressdeckComponent"}, {}},
    {"Pressdeck",           {Source::StringKey, "PressdeckComponent"}, {Source::StringKey, "PressdeckComponent"}},
    {"Fax.pkg",             {Source::StringKey, "PCFAXComponent"},     {}},
    {"PC fax Utility",      {Source::StringKey, "PCFAXComponent"},     {Source::StringKey, "PCFAXComponent"}},
    {"Scan Manager.pkg",    {Source::Text, "Scan Manager"},            {}},
    {"Scanmate.pkg",        {Source::Text, "Scanmate"},                {}},
    {"Scan Manager",        {}, {}},
    {"Scanmate",            {}, {}},
    {"User's Guide",        {}, {}},
    {"print driver",        {}, {}},
    {"Printer Driver.PKG",  {}, {}},
    {"Fax.pkg ",            {}, {}},
    {"",                    {}, {}},
};
// clang-format on

void expectName(const DisplayName &name, const DisplayName &expected, std::string_view row, const char *flow) {
    EXPECT_EQ(name.source, expected.source) << '"' << row << "\" in the " << flow << " flow";
    EXPECT_EQ(name.text, expected.text) << '"' << row << "\" in the " << flow << " flow";
}

} // namespace

TEST(ComponentName, EachFlowHasItsOwnDisplayNames) {
    for (const NameCase &row : nameCases) {
        expectName(displayName(Flow::Web, row.name), row.web, row.name, "web");
        expectName(displayName(Flow::Media, row.name), row.media, row.name, "media");
    }
}

TEST(ComponentName, OneNameAFlowIsThePrinterDriver) {
    EXPECT_TRUE(isPrinterDriver(Flow::Web, "Printer Driver.pkg"));
    EXPECT_FALSE(isPrinterDriver(Flow::Web, "Print Driver"));
    EXPECT_TRUE(isPrinterDriver(Flow::Media, "Print Driver"));
    EXPECT_FALSE(isPrinterDriver(Flow::Media, "Printer Driver.pkg"));
    for (const Flow flow : {Flow::Web, Flow::Media})
        EXPECT_FALSE(isPrinterDriver(flow, "Scan Driver"));
}

// Builds what the measured web run downloads, still to be put into archives:  WebSample FOLDER
#include "Catalogue.hpp"

#include <cstdio>
#include <exception>

namespace {

using namespace vant::samples;

// Sizes that differ, so that the archives arrive in a known order. The first seven are installed, or dropped by the
// rules; an archive of an application alone installs nothing.
// clang-format off
constexpr Sample packages[] = {
    {"Printer Driver.pkg",  "Quorvel Printer Driver",  "/Library/Printers/Quorvel/Driver",      Form::Flat,    400, 10'000'000},
    {"Printer Manager.pkg", "Quorvel Printer Manager", "/Applications/Quorvel/Printer Manager", Form::Product, 300, 9'000'000},
    {"Scan Manager.pkg",    "Quorvel Scan Manager",    "/Applications/Quorvel/Scan Manager",    Form::Flat,    100, 5'000'000},
    {"Scanmate.pkg",        "Quorvel Scanmate",        "/Applications/Quorvel/Scanmate",        Form::Flat,    100, 4'000'000},
    {"Hueforge.pkg",        "Quorvel Hueforge",        "/Applications/Quorvel/Hueforge",        Form::Bundle,  200, 7'000'000},
    {"Scanwick.pkg",        "Quorvel Scanwick",        "/Applications/Quorvel/Scanwick",        Form::Flat,    200, 6'000'000},
    {"Fax.pkg",             "Quorvel Fax",             "/Library/Printers/Quorvel/Fax",         Form::Bundle,  200, 8'000'000},
    {"Uninstaller.pkg",     "Quorvel Uninstaller",     "/Applications/Quorvel/Uninstaller",     Form::Flat,      8,    20'000},
};
constexpr Sample applications[] = {
    {"Net Setter.app",          "", "", Form::Flat, 100, 2'000'000},
    {"NetSetter.app",           "", "", Form::Flat, 100, 1'000'000},
    {"Quorvel Scanner.app",     "", "", Form::Flat, 100, 3'000'000},
};
// clang-format on

void build(const std::filesystem::path &folder) {
    for (const Sample &sample : packages)
        writeSample(folder, sample);
    for (const Sample &sample : applications)
        for (const Item &item : payloadOf(sample))
            if (item.kind == Item::Kind::File)
                writeText(folder / sample.name / "Contents" / item.path, item.content);
}

} // namespace

int main(int count, char **arguments) {
    try {
        if (count == 2)
            return build(arguments[1]), 0;
        std::fputs("usage: WebSample FOLDER\n", stderr);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "WebSample: %s\n", error.what());
    }
    return 1;
}

#pragma once
#include "ArchiveBuilder.hpp"

#include <cstddef>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vant::samples {

enum class Form { Flat, FlatPlain, Product, Bundle };

/// What a package is, whoever builds it.
struct Package {
    const char *name;     ///< file name, "Printer Driver.pkg"
    const char *title;    ///< name that it shows
    const char *location; ///< where it installs; no two packages of one run share a place
    Form form;
};

// clang-format off
inline constexpr Package packages[] = {
    {"Printer Driver.pkg",  "Quorvel Printer Driver",  "/Library/Printers/Quorvel/Driver",           Form::Flat},
    {"Scan Driver.pkg",     "Quorvel Scan Driver",     "/Library/Image Capture/Quorvel Scan Driver", Form::Product},
    {"Scan Driver 2.pkg",   "Quorvel Network Scan",    "/Library/Image Capture/Quorvel Network",     Form::FlatPlain},
    {"Scan Manager.pkg",    "Quorvel Scan Manager",    "/Applications/Quorvel/Scan Manager",         Form::Flat},
    {"Scanmate.pkg",        "Quorvel Scanmate",        "/Applications/Quorvel/Scanmate",             Form::Flat},
    {"Hueforge.pkg",        "Quorvel Hueforge",        "/Applications/Quorvel/Hueforge",             Form::Bundle},
    {"Scanwick.pkg",        "Quorvel Scanwick",        "/Applications/Quorvel/Scanwick",             Form::Flat},
    {"Printer Manager.pkg", "Quorvel Printer Manager", "/Applications/Quorvel/Printer Manager",      Form::Product},
    {"Docuvane.pkg",        "Quorvel Docuvane",        "/Applications/Quorvel/Docuvane",             Form::Flat},
    {"Fax.pkg",             "Quorvel Fax",             "/Library/Printers/Quorvel/Fax",              Form::Bundle},
    {"Manual.pkg",          "Quorvel User’s Guide",    "/Library/Documentation/Quorvel",             Form::Flat},
    {"Uninstaller.pkg",     "Quorvel Uninstaller",     "/Applications/Quorvel/Uninstaller",          Form::Flat},
    {"Suite Part.pkg",      "Quorvel Suite",           "/Applications/Quorvel/Suite",                Form::Flat},
    {"Quorvel Extras.pkg",  "Quorvel Extras",          "/Applications/Quorvel/Extras",               Form::FlatPlain},
};
// clang-format on

/// A package with as much in it as somebody wants to have.
struct Sample {
    Package package;
    std::size_t files;
    std::size_t noise; ///< bytes that do not compress, beside a few hundred bytes of text in each file
};

/// The package of a name, filled. A name that no package has does not compile where the sample is a constant.
[[nodiscard]] constexpr Sample sample(std::string_view name, std::size_t files, std::size_t noise) {
    for (const Package &package : packages)
        if (name == package.name)
            return {package, files, noise};
    throw std::invalid_argument("no package of this name");
}

/// The files of the package, the same on every machine and in every run. Names hold blanks and accents.
[[nodiscard]] std::vector<Item> payloadOf(const Sample &sample);

/// Builds the package in the folder. Returns its path.
std::filesystem::path writeSample(const std::filesystem::path &folder, const Sample &sample);

/// The manifest: a JSON text with name and number of payload files of each package.
[[nodiscard]] std::string manifestOf(std::span<const Sample> samples);

/// The bytes of a file. Throws when it cannot be read.
[[nodiscard]] std::string contentsOf(const std::filesystem::path &path);

/// Writes a text file, its folders included.
void writeText(const std::filesystem::path &path, const std::string &text);

} // namespace vant::samples

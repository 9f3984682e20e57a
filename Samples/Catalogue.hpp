#pragma once
#include "ArchiveBuilder.hpp"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

namespace vant::samples {

enum class Form { Flat, FlatPlain, Product, Bundle };

/// One sample package: what it is called, where it installs, and how much.
struct Sample {
    const char *name;     ///< file name, "Printer Driver.pkg"
    const char *title;    ///< name that it shows
    const char *location; ///< where it installs; no two packages of one run share a place
    Form form;
    std::size_t files;
    std::size_t noise; ///< bytes that do not compress, beside a few hundred bytes of text in each file
};

/// The files of the package, the same on every machine and in every run. Names hold blanks and accents.
[[nodiscard]] std::vector<Item> payloadOf(const Sample &sample);

/// Builds the package in the folder. Returns its path.
std::filesystem::path writeSample(const std::filesystem::path &folder, const Sample &sample);

/// The manifest: a JSON text with name and number of payload files of each package.
[[nodiscard]] std::string manifestOf(std::span<const Sample> samples);

/// Writes a text file, its folders included.
void writeText(const std::filesystem::path &path, const std::string &text);

} // namespace vant::samples

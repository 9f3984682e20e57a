#include "Catalogue.hpp"

#include "PackageBuilder.hpp"

#include <array>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace vant::samples {

namespace {

constexpr std::size_t filesInAFolder = 40;
constexpr std::size_t loudFiles = 8; ///< one file of so many holds noise

constexpr std::array<const char *, 6> folderNames{"Papier à lettres", "Größen", "Color Tables",
                                                  "Perfiles de año",  "用紙",   "Résolution"};
constexpr std::array<const char *, 8> fileNames{
    "Tray", "Qualité d’impression", "Übersicht", "Page Setup", "Bandeja", "トナー", "Duplex", "Média spécial"};
constexpr std::array<const char *, 4> extensions{"plist", "xml", "txt", "tbl"};

std::uint32_t seedOf(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    return hash;
}

std::string noiseOf(std::mt19937 &random, std::size_t count) {
    std::string bytes(count, '\0');
    for (auto &byte : bytes)
        byte = static_cast<char>(random() & 0xFFU);
    return bytes;
}

std::string textOf(std::mt19937 &random, const std::string &name) {
    std::string text = "# " + name + "\n";
    for (auto lines = 4 + random() % 24; lines > 0; --lines)
        text += "option." + std::to_string(random() % 100) + " = default\n";
    return text;
}

std::string nameOf(std::size_t index) {
    const auto number = std::to_string(index + 1);
    return std::string(folderNames[index / filesInAFolder % folderNames.size()]) + " " +
           std::to_string(index / filesInAFolder + 1) + "/" + fileNames[index % fileNames.size()] + " " + number + "." +
           extensions[index % extensions.size()];
}

} // namespace

std::vector<Item> payloadOf(const Sample &sample) {
    std::mt19937 random(seedOf(sample.package.name));
    std::vector<Item> items;
    const auto loud = (sample.files + loudFiles - 1) / loudFiles;
    for (std::size_t i = 0; i < sample.files; ++i) {
        const auto name = nameOf(i);
        if (i % filesInAFolder == 0)
            items.push_back(folder(name.substr(0, name.find('/'))));
        auto content = i % loudFiles == 0 ? noiseOf(random, sample.noise / loud) : textOf(random, name);
        items.push_back(file(name, std::move(content), i % loudFiles == 0 ? 0755 : 0644));
    }
    return items;
}

std::filesystem::path writeSample(const std::filesystem::path &folder, const Sample &sample) {
    const Package &package = sample.package;
    const auto path = folder / package.name;
    const auto files = payloadOf(sample);
    const std::string title = package.title;
    switch (package.form) {
    case Form::Flat:
        return writeFlatPackage(path, "example.quorvel." + title, package.location, files, Payload::Gzip);
    case Form::FlatPlain:
        return writeFlatPackage(path, "example.quorvel." + title, package.location, files, Payload::Plain);
    case Form::Bundle:
        return writeBundlePackage(path, title, package.location, files);
    case Form::Product:
        break;
    }
    // Cut between two folders, so that neither component needs one of the other's.
    auto cut = files.begin() + static_cast<std::ptrdiff_t>(files.size() / 2);
    while (cut != files.end() && cut->kind != Item::Kind::Folder)
        ++cut;
    return writeProduct(path, title,
                        {{title + " Core.pkg", package.location, {files.begin(), cut}},
                         {title + " Extras.pkg", package.location, {cut, files.end()}}});
}

std::string manifestOf(std::span<const Sample> samples) {
    std::string rows;
    std::size_t total = 0;
    for (const auto &sample : samples) {
        rows += (rows.empty() ? "\n" : ",\n") + std::string(R"(    {"name": ")") + sample.package.name +
                R"(", "files": )" + std::to_string(sample.files) + "}";
        total += sample.files;
    }
    return "{\n  \"packages\": [" + rows + "\n  ],\n  \"files\": " + std::to_string(total) + "\n}\n";
}

std::string contentsOf(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeText(const std::filesystem::path &path, const std::string &text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush())
        throw std::runtime_error("cannot write " + path.string());
}

} // namespace vant::samples

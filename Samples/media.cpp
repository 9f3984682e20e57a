// Builds the sample media:  sample_media MEDIA PICTURE DEFAULT_PICTURE PROFILES
#include "Catalogue.hpp"
#include "PlistText.hpp"
#include "Slides.hpp"

#include <cstdio>
#include <iterator>

namespace fs = std::filesystem;

namespace {

using namespace vant::samples;

constexpr const char *packagesFolder = "MAC_Installer/InstallFiles/Packages";
constexpr const char *profilesFolder = "MAC_Installer/InstallFiles/Profiles";
constexpr const char *models[] = {"RXM2 4410", "RXM2 4410 Série"};

constexpr Sample samples[] = {
    sample("Printer Driver.pkg", 900, 3'600'000), sample("Scan Driver.pkg", 600, 2'400'000),
    sample("Scan Driver 2.pkg", 320, 1'200'000),  sample("Printer Manager.pkg", 480, 1'800'000),
    sample("Docuvane.pkg", 280, 1'200'000),       sample("Fax.pkg", 240, 900'000),
    sample("Manual.pkg", 160, 1'500'000),         sample("Uninstaller.pkg", 60, 300'000),
};

/// The last two packages are resources of the host application.
constexpr std::size_t packagesOnMedia = std::size(samples) - 2;

std::string onMedia(const char *name) {
    return std::string(packagesFolder) + "/" + name;
}

/// The user's choices. The manuals of a web installation are read on the web, so only the media flow asks for them.
std::string settings(const char *withoutConnection) {
    const auto second = plistDictionary({{"LOCATION", plistString(onMedia("Scan Driver 2.pkg"))}});
    return plistDocument(plistDictionary({
        {"Smart Update", plistString("0")},
        {"WebError", plistString("0")},
        {"Debug", plistString("debug_off")},
        {"VantWithoutConnection", plistString(withoutConnection)},
        {"MODELS", plistArray({plistString(models[0]), plistString(models[1])})},
        {"PackagesInfo", plistDictionary({{"Scan Driver1", second}})},
    }));
}

/// In the order of a catalogue, which is not the order of installation.
std::string selection() {
    return selectionDocument({
        {"PC fax Utility", onMedia("Fax.pkg")},
        {"Docuvane", onMedia("Docuvane.pkg")},
        {"Pressdeck", onMedia("Printer Manager.pkg")},
        {"Scan Driver", onMedia("Scan Driver.pkg")},
        {"Print Driver", onMedia("Printer Driver.pkg")},
    });
}

/// Real profiles: some loose, some in a zip, there partly in a folder.
void writeProfiles(const fs::path &folder, const fs::path &source) {
    fs::create_directories(folder);
    for (const auto *name : {"sRGB.icc", "compatibleWithAdobeRGB1998.icc", "Gray.icc"})
        fs::copy_file(source / name, folder / name);
    const auto zipped = [&](const char *from, const char *path) { return file(path, contentsOf(source / from)); };
    writeArchive(folder / "More Profiles.zip", Format::Zip, Filter::None,
                 {zipped("ITULab.icc", "Quorvel Lab.icc"), vant::samples::folder("Épreuves CMYK"),
                  zipped("ghostscript/ps_cmyk.icc", "Épreuves CMYK/Quorvel Photo Paper.icc"),
                  zipped("ghostscript/default_cmyk.icc", "Épreuves CMYK/Quorvel Plain Paper.icc")});
}

void writeManuals(const fs::path &media) {
    for (const auto *model : models)
        writeText(media / "MANUAL" / model / "index.html",
                  "<!doctype html>\n<meta charset=\"utf-8\">\n<title>" + std::string(model) + "</title>\n<h1>" + model +
                      "</h1>\n<p>Load paper, switch the printer on, and choose Print.</p>\n");
}

void build(const fs::path &media, char *const *sources) {
    fs::remove_all(media);
    for (std::size_t i = 0; i < std::size(samples); ++i)
        writeSample(media / (i < packagesOnMedia ? packagesFolder : "Resources"), samples[i]);
    writeText(media / "SelectedInput.plist", selection());
    writeText(media / "VantUserSettings.plist", settings("no"));
    writeText(media / "VantUserSettings-web.plist", settings("yes"));
    writeText(media / "manifest.json", manifestOf(samples));
    writeManuals(media);
    writeSlides(media, sources[0], sources[1]);
    writeProfiles(media / profilesFolder, sources[2]);
}

} // namespace

int main(int count, char **arguments) {
    if (count != 5) {
        std::fputs("usage: sample_media MEDIA PICTURE DEFAULT_PICTURE PROFILES\n", stderr);
        return 1;
    }
    try {
        build(arguments[1], arguments + 2);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "sample_media: %s\n", error.what());
        return 1;
    }
}

// Builds the sample download site:  sample_site SITE
#include "Catalogue.hpp"
#include "PackageBuilder.hpp"
#include "PlistText.hpp"

#include <cstdio>
#include <span>

namespace fs = std::filesystem;

namespace {

using namespace vant::samples;

constexpr Sample known[] = {
    sample("Printer Driver.pkg", 240, 1'500'000),
    sample("Printer Manager.pkg", 160, 1'200'000),
    sample("Scan Manager.pkg", 80, 400'000),
    sample("Scanmate.pkg", 60, 300'000),
    sample("Hueforge.pkg", 120, 900'000),
    sample("Scanwick.pkg", 100, 600'000),
    sample("Fax.pkg", 90, 500'000),
};
// An older one than the host's, which is installed instead. It has a place of its own, so that it would be seen there.
constexpr Sample uninstaller = [] {
    Sample older = sample("Uninstaller.pkg", 8, 20'000);
    older.package.location = "/Applications/Quorvel/Old Uninstaller";
    return older;
}();
constexpr Sample suitePart = sample("Suite Part.pkg", 8, 20'000);
constexpr Sample unknown = sample("Quorvel Extras.pkg", 24, 200'000);

const Sample &knownAs(const std::string &name) {
    for (const auto &each : known)
        if (name == each.package.name)
            return each;
    throw std::runtime_error("no sample is called " + name);
}

/// Packages are built in a folder of their own and then put into archives, as they would be for a download.
class Site {
public:
    explicit Site(fs::path folder) : folder_(std::move(folder)), packages_(folder_.string() + "-packages") {
        fs::remove_all(folder_);
        fs::remove_all(packages_);
    }

    /// The package as items of an archive, below a path ("" or "Some Folder/").
    std::vector<Item> packaged(const Sample &sample, const std::string &below = "") {
        const auto path = writeSample(packages_, sample);
        if (!fs::is_directory(path))
            return {file(below + sample.package.name, contentsOf(path))};
        std::vector<Item> items{folder(below + sample.package.name)};
        for (const auto &entry : fs::recursive_directory_iterator(path)) {
            const auto name = below + fs::relative(entry.path(), packages_).string();
            items.push_back(entry.is_directory() ? folder(name) : file(name, contentsOf(entry.path())));
        }
        return items;
    }

    void zip(const std::string &name, const std::vector<Item> &items) const {
        writeArchive(folder_ / "components" / name, Format::Zip, Filter::None, items);
    }

    void cpio(const std::string &name, const std::vector<Item> &items) const {
        writeArchive(folder_ / "components" / name, Format::Cpio, Filter::Gzip, items);
    }

    void text(const std::string &name, const std::string &content) const { writeText(folder_ / name, content); }

private:
    fs::path folder_;
    fs::path packages_;
};

std::vector<Item> joined(std::vector<Item> first, const std::vector<Item> &second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void writeKnown(Site &site) {
    const std::string attributes("\x00\x05\x16\x07\x00\x02\x00\x00", 8);
    site.zip("PrinterDriver.zip", joined(site.packaged(knownAs("Printer Driver.pkg")), site.packaged(uninstaller)));
    site.cpio("PrinterManager.cpio.gz",
              joined(site.packaged(knownAs("Printer Manager.pkg"), "Quorvel Printer Manager/Disk 1/"),
                     {file("Quorvel Printer Manager/Net Setter.app/Contents/MacOS/Net Setter", "#!/bin/sh\n", 0755)}));
    site.zip("ScanManager.zip", site.packaged(knownAs("Scan Manager.pkg")));
    site.cpio("Scanmate.cpio.gz", site.packaged(knownAs("Scanmate.pkg")));
    site.zip("Hueforge.zip", site.packaged(knownAs("Hueforge.pkg"), "Épreuves & Größen/トナー/"));
    site.zip("Scanwick.zip",
             joined(site.packaged(knownAs("Scanwick.pkg")),
                    {file("Lisez-moi d’abord.txt", "Bonjour\n"), file("__MACOSX/._Scanwick.pkg", attributes)}));
    site.cpio("Fax.cpio.gz", site.packaged(knownAs("Fax.pkg")));
}

/// What cannot be installed unattended: a metapackage, an application, a vendor's own installer, an unknown package.
void writeSetAside(Site &site) {
    const std::string suite = "Quorvel Suite.mpkg/Contents/";
    site.zip("Suite.zip", joined({file(suite + "Info.plist", plistDocument(plistDictionary({})))},
                                 site.packaged(suitePart, suite + "Packages/")));
    site.zip("Viewer.zip", {file("Quorvel Viewer.app/Contents/Info.plist", plistDocument(plistDictionary({}))),
                            file("Quorvel Viewer.app/Contents/MacOS/Quorvel Viewer", "#!/bin/sh\n", 0755)});
    site.cpio("RXM2.cpio.gz",
              {file("Quorvel RXM2 Installer", "#!/bin/sh\n", 0755), file("Données/Pilote.dat", "RXM2\n")});
    site.zip("Extras.zip", site.packaged(unknown));
}

void writeSelections(const Site &site) {
    site.text("SelectedInput.plist", selectionDocument({
                                         {"PC fax Utility", "components/Fax.cpio.gz"},
                                         {"Pressdeck", "components/PrinterManager.cpio.gz"},
                                         {"Scan Driver", "components/ScanManager.zip"},
                                         {"Scan Driver", "components/Scanmate.cpio.gz"},
                                         {"Statora", "components/Hueforge.zip"},
                                         {"Scan Driver", "components/Scanwick.zip"},
                                         {"Print Driver", "components/PrinterDriver.zip"},
                                     }));
    site.text("SelectedInput-setaside.plist", selectionDocument({
                                                  {"Print Driver", "components/PrinterDriver.zip"},
                                                  {"Docuvane", "components/Suite.zip"},
                                                  {"Statora", "components/Viewer.zip"},
                                                  {"Scan Driver", "components/RXM2.cpio.gz"},
                                                  {"Pressdeck", "components/Extras.zip"},
                                              }));
}

void build(const fs::path &folder) {
    Site site(folder);
    writeKnown(site);
    writeSetAside(site);
    writeSelections(site);
    site.text("manifest.json", manifestOf(known));
}

} // namespace

int main(int count, char **arguments) {
    if (count != 2) {
        std::fputs("usage: sample_site SITE\n", stderr);
        return 1;
    }
    try {
        build(arguments[1]);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "sample_site: %s\n", error.what());
        return 1;
    }
}

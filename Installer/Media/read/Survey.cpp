#include "read/Survey.hpp"

#include "base/Languages.hpp"
#include "base/Paths.hpp"
#include "install/profiles/ColourProfiles.hpp"
#include "install/tasks/Archives.hpp"
#include "Locations.hpp"
#include "read/ArchiveListing.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>
#include <filesystem>

namespace vant::media {
namespace {

namespace fs = std::filesystem;

bool isThere(const fs::path &path) {
    std::error_code problem;
    return fs::exists(path, problem);
}

bool isFolder(const fs::path &path) {
    std::error_code problem;
    return fs::is_directory(path, problem);
}

std::vector<std::string> namesIn(const fs::path &folder) {
    std::vector<std::string> names;
    std::error_code problem;
    for (fs::directory_iterator item(folder, problem), end; !problem && item != end; item.increment(problem))
        names.push_back(item->path().filename());
    std::ranges::sort(names);
    return names;
}

std::optional<std::string> absolute(const std::optional<std::string> &location, const std::string &base) {
    return location ? std::optional(host::absoluteLocation(*location, base)) : std::nullopt;
}

std::optional<std::string> hostPackage(const fs::path &media, const char *name) {
    const fs::path path = media / "Resources" / name;
    return isThere(path) ? std::optional(path.string()) : std::nullopt;
}

/// The host takes the choices of their own that media may have for the web flow.
std::string settingsPath(const Request &request) {
    if (request.settings)
        return *request.settings;
    const fs::path ofWeb = fs::path(request.media) / "VantUserSettings-web.plist";
    return request.webSelection && isThere(ofWeb) ? ofWeb.string()
                                                  : (fs::path(request.media) / "VantUserSettings.plist").string();
}

SlideSet slideSet(const fs::path &folder) {
    SlideSet set{.folder = folder.string(), .isThere = isThere(folder), .text = std::nullopt};
    set.hasImage = isThere(folder / "image.png");
    set.hasTextFile = isThere(folder / "string.xml");
    set.text = readText((folder / "string.xml").string());
    return set;
}

/// Folders of a slide set that are no language's.
void lookForStrayLanguages(const fs::path &set, std::vector<std::string> &stray) {
    for (const std::string &name : namesIn(set))
        if (languageOfCode(name) == nullptr && !name.starts_with('.'))
            stray.push_back((set / name).string());
}

void lookAtSlides(Survey &found) {
    const fs::path media = found.media;
    for (const Language &language : languages())
        found.slides.push_back({std::string(language.code), slideSet(media / "GTA" / language.code),
                                slideSet(media / "GTA_Default" / language.code)});
    for (const char *set : {"GTA", "GTA_Default"})
        lookForStrayLanguages(media / set, found.strayLanguages);
}

void lookAtProfiles(Survey &found) {
    const std::string root = found.media;
    const MediaFolders present{.installFiles = isFolder(root + std::string(installFilesFolder)),
                               .macData = isFolder(root + std::string(macDataFolder))};
    if (!present.installFiles && !present.macData)
        return;
    ProfileSource &source = found.profiles;
    source.folder = profileSourceFolder(root, present);
    // Without the slash at its end, behind which a file would not be found.
    const fs::path folder = fs::path(source.folder).parent_path();
    source.isThere = isThere(folder);
    source.isFolder = isFolder(folder);
    for (const std::string &name : namesIn(folder)) {
        const ProfileFile kind = profileFileOfExtension(pathExtension(name));
        if (kind == ProfileFile::Profile)
            source.profiles.push_back(name);
        else if (kind == ProfileFile::Archive)
            source.archives.push_back(name);
    }
}

void lookForManuals(Survey &found) {
    if (!found.settings.manualsLookedFor)
        return;
    for (const std::string &model : found.settings.models) {
        if (isThere(fs::path(found.media) / "MANUAL" / model))
            found.input.manualWanted = true;
        else
            found.modelsWithoutManual.push_back(model);
    }
}

/// The archive of a location, when the site lies in the folder of its selection.
std::optional<fs::path> localArchive(const std::string &selection, const std::optional<std::string> &location) {
    if (!location || location->empty() || location->find("://") != std::string::npos)
        return std::nullopt;
    const fs::path path = fs::path(selection).parent_path() / *location;
    return isThere(path) ? std::optional(path) : std::nullopt;
}

void lookAtArchives(Survey &found, const Request &request) {
    for (const MediaComponent &component : found.web->components) {
        WebComponent web{absolute(component.location, request.site), component.kind, std::nullopt};
        std::string fault;
        std::optional<std::string> file;
        if (request.isOffline)
            web.items.emplace();
        else if (const auto archive =
                     request.isSiteVisited ? std::nullopt : localArchive(found.web->file.path, component.location)) {
            const bool isZip = archiveKind(destinationName(*web.address)) == ArchiveKind::Zip;
            file = archive->string();
            ArchiveState state = readArchive(archive->string(), isZip);
            web.items = std::move(state.items);
            fault = std::move(state.fault);
        }
        found.input.web.push_back(std::move(web));
        found.archives.push_back(std::move(file));
        found.archiveFaults.push_back(std::move(fault));
    }
}

void lookAtMedia(Survey &found, const Request &request) {
    std::error_code problem;
    const fs::path media = fs::absolute(request.media, problem).lexically_normal();
    found.media = media.has_filename() ? media.string() : media.parent_path().string();
    found.selection = readSelection(request.selection.value_or((media / "SelectedInput.plist").string()));
    found.settings = readSettings(settingsPath(request));
    for (const MediaComponent &component : found.selection.components)
        found.input.media.push_back({absolute(component.location, found.media), component.kind});
    found.input.secondScanDriver = absolute(found.settings.secondScanDriver, found.media);
    found.input.uninstaller = hostPackage(media, "Uninstaller.pkg");
    found.input.manual = hostPackage(media, "Manual.pkg");
    found.input.webError = found.settings.switches.webError;
    lookForManuals(found);
    lookAtSlides(found);
    lookAtProfiles(found);
}

} // namespace

Survey survey(const Request &request) {
    Survey found;
    if (request.media.empty())
        // Whatever the media are, the host brings one.
        found.input.uninstaller = std::string(uninstallerPackage);
    else
        lookAtMedia(found, request);
    if (request.webSelection)
        found.web = readSelection(*request.webSelection);
    // The host sets the switch itself, by the flow that it is asked for.
    found.input.smartUpdate = request.webSelection.has_value();
    if (found.web)
        lookAtArchives(found, request);
    return found;
}

} // namespace vant::media

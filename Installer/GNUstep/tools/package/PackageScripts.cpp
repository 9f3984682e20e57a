#include "GNUstep/tools/package/PackageScripts.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

namespace vant::tools {

namespace {

constexpr std::chrono::minutes longestScript{10};
/// Where this platform's programs are; a package's own lie where the other platform has them.
constexpr const char *path = "/usr/bin:/bin:/usr/sbin:/sbin:/usr/local/bin";

} // namespace

void PackageScripts::makeSureTheyRun() const {
    if (package_.hasScripts() && !root_.isAvailable())
        throw ExpansionError(
            "The package has scripts, which cannot be run here: bubblewrap is missing or not permitted.");
}

void PackageScripts::run(const Component &component, const std::vector<std::string> &names,
                         const std::string &folder) const {
    const auto place =
        component.installLocation.starts_with('/') ? component.installLocation : '/' + component.installLocation;
    for (const auto &name : names) {
        auto file = folder;
        file.append("/").append(name);
        const PrivateRoot::Variables variables{
            {"PATH", path},
            {"HOME", "/var/root"},
            {"USER", "root"},
            {"INSTALLER_TEMP", folder},
            {"PACKAGE_PATH", package_.path},
            {"SCRIPT_NAME", std::filesystem::path(name).filename()},
            {"DSTROOT", "/"},
            {"DSTVOLUME", "/"},
            {"COMMAND_LINE_INSTALL", "1"},
        };
        if (root_.run(folder, {file, package_.path, place, "/", "/"}, variables, longestScript) != 0)
            throw ExpansionError("An error occurred while running scripts from the package “" + component.name + "”.");
    }
}

} // namespace vant::tools

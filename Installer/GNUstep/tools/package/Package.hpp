#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vant::tools {

/// One part of a package that is installed as a whole: files, and scripts that run before and after.
struct Component {
    std::string name;    ///< "Some Part.pkg"
    std::string payload; ///< entry in a flat package, file of a bundle package; empty when there is nothing to write
    std::string installLocation;     ///< folder below the volume, as the package says it ("/", "/Library/Printers")
    std::uint64_t size = 0;          ///< bytes of the payload as stored
    std::string scripts;             ///< entry that holds the scripts; the folder that does in a bundle package
    std::vector<std::string> before; ///< scripts to run before the files are put in place, by their names among them
    std::vector<std::string> after;  ///< and afterwards

    [[nodiscard]] bool hasScripts() const { return !before.empty() || !after.empty(); }
};

/// An installer package, opened far enough to know what it holds.
struct Package {
    enum class Form { Flat, Bundle };

    Form form = Form::Flat;
    std::string path;
    std::string title;
    std::vector<Component> components; ///< in the order in which they are installed

    /// Bytes of all payloads as stored.
    [[nodiscard]] std::uint64_t size() const;
    [[nodiscard]] bool hasScripts() const;
};

/// Opens a flat package (a xar with a "PackageInfo", or a "Distribution" and component packages) or a bundle package (a
/// folder with "Contents/Archive.pax.gz"). Components that aren't selected are left out. Throws ExpansionError when the
/// path is neither.
[[nodiscard]] Package openPackage(const std::string &path);

/// Which of a component's two archives.
enum class Part { Payload, Scripts };
using PartUse = std::function<void(std::size_t component, Part part, ByteSource &source)>;

/// Hands every archive of the package to `use`, each once and in the order in which they are stored, so that the
/// package is read once. `use` must read each to its end: a flat package's checksums are tested there. A bundle
/// package's scripts are no archive. Throws ExpansionError.
void forEachPart(const Package &package, const PartUse &use);

/// The two forms, for `openPackage` and `forEachPart`.
[[nodiscard]] Package openFlatPackage(const std::string &path);
[[nodiscard]] Package openBundlePackage(const std::string &path);
void forEachFlatPart(const Package &package, const PartUse &use);

} // namespace vant::tools

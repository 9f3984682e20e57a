#pragma once
#include "ArchiveBuilder.hpp"

namespace vant::samples {

enum class Payload { Plain, Gzip };

/// A package of one component, as a xar: "PackageInfo" and "Payload".
[[nodiscard]] std::vector<Item> componentItems(const std::string &folder, const std::string &identifier,
                                               const std::string &location, const std::vector<Item> &files,
                                               Payload payload);
std::filesystem::path writeFlatPackage(const std::filesystem::path &path, const std::string &identifier,
                                       const std::string &location, const std::vector<Item> &files,
                                       Payload payload = Payload::Gzip);

/// One component of a product.
struct ComponentFiles {
    std::string name; ///< "Some Part.pkg"
    std::string location;
    std::vector<Item> files;
};

/// A product: a xar with a "Distribution" and one folder for each component.
std::filesystem::path writeProduct(const std::filesystem::path &path, const std::string &title,
                                   const std::vector<ComponentFiles> &components);

/// A bundle package: a folder with "Contents/Archive.pax.gz", "Contents/Info.plist" and "Contents/PkgInfo".
std::filesystem::path writeBundlePackage(const std::filesystem::path &path, const std::string &title,
                                         const std::string &location, const std::vector<Item> &files);

/// Text with the five characters that XML reserves replaced.
[[nodiscard]] std::string escaped(const std::string &text);

} // namespace vant::samples

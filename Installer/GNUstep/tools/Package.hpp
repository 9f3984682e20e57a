#pragma once
#include "ByteSource.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vant {

/// One payload of a package and where it goes.
struct Component {
    std::string payload; ///< entry in a flat package, file of a bundle package; empty when there is nothing to write
    std::string installLocation; ///< folder below the volume, as the package says it ("/", "/Library/Printers")
    std::uint64_t size = 0;      ///< bytes of the payload as stored
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
};

/// Opens a flat package (a xar with a "PackageInfo", or a "Distribution" and component packages) or a bundle package (a
/// folder with "Contents/Archive.pax.gz"). Throws ExpansionError when the path is neither.
[[nodiscard]] Package openPackage(const std::string &path);

/// Opens the component's payload and hands it to `use`, which has to read to its end: a flat package's checksum is
/// tested there. Throws ExpansionError.
void withPayload(const Package &package, const Component &component, const std::function<void(ByteSource &)> &use);

} // namespace vant

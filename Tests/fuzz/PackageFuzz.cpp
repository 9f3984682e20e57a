#include "FuzzJail.hpp"
#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "GNUstep/tools/package/Package.hpp"

// Any bytes are a flat package, whose parts are expanded into their folder, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const vant::fuzz::FuzzJail jail;
    try {
        const auto package = vant::tools::openPackage(jail.input(data, size));
        vant::fuzz::require(!package.components.empty());
        vant::tools::forEachPart(package, [&](std::size_t index, vant::tools::Part, vant::tools::ByteSource &source) {
            vant::fuzz::require(index < package.components.size());
            vant::tools::PlainBytes plain(source);
            const auto reader = vant::tools::ArchiveReader::payload(plain.source());
            jail.expandHere(*reader);
        });
    } catch (const vant::tools::ExpansionError &) {
        return 0;
    }
    return 0;
}

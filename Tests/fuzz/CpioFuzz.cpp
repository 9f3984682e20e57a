#include "FuzzJail.hpp"
#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"

// Any bytes are a cpio, compressed or not, that is expanded into its folder, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const vant::fuzz::FuzzJail jail;
    try {
        vant::tools::FileSource file(jail.input(data, size));
        vant::tools::PlainBytes plain(file);
        const auto reader = vant::tools::ArchiveReader::payload(plain.source());
        jail.expandHere(*reader);
    } catch (const vant::tools::ExpansionError &) {
        return 0;
    }
    return 0;
}

#include "FuzzJail.hpp"
#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"

// Any bytes are a cpio, compressed or not, that is expanded into its folder, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const vant::fuzz::FuzzJail jail;
    try {
        vant::FileSource file(jail.input(data, size));
        vant::PlainBytes plain(file);
        const auto reader = vant::ArchiveReader::payload(plain.source());
        jail.expandHere(*reader);
    } catch (const vant::ExpansionError &) {
        return 0;
    }
    return 0;
}

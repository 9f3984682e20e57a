#include "FuzzJail.hpp"
#include "GNUstep/tools/archive/ZipReader.hpp"

// Any bytes are a zip that is expanded into its folder, or an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const vant::fuzz::FuzzJail jail;
    try {
        vant::tools::ZipReader reader(jail.input(data, size));
        jail.expandHere(reader);
    } catch (const vant::tools::ExpansionError &) {
        return 0;
    }
    return 0;
}

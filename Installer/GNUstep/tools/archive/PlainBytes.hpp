#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <memory>
#include <vector>

namespace vant::tools {

/// The plain bytes of an archive's stream, whatever it is compressed with: gzip, xz, lzma, pbzx or nothing (bzip2 is
/// left to the archive library). A cpio's sums are tested on the way. The source must outlive it.
class PlainBytes {
public:
    explicit PlainBytes(ByteSource &source);

    [[nodiscard]] ByteSource &source() { return *last_; }

private:
    std::vector<std::unique_ptr<ByteSource>> owned_;
    ByteSource *last_;
};

} // namespace vant::tools

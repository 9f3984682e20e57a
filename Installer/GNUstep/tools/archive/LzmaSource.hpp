#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <memory>

namespace vant::tools {

/// The decompressed bytes of one or several xz streams, or of one lzma file; an xz's checksums are tested. What needs a
/// larger dictionary than 32 MiB is refused. The source must outlive it.
class LzmaSource : public ByteSource {
public:
    explicit LzmaSource(ByteSource &compressed);
    ~LzmaSource() override;

    /// Whether the stream begins as an xz or as an lzma file does.
    [[nodiscard]] static bool isLzma(ByteSource &source);

protected:
    std::size_t fill(std::span<char> buffer) override;

private:
    struct State;

    ByteSource &compressed_;
    std::unique_ptr<State> state_;
};

} // namespace vant::tools

#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <memory>

namespace vant::tools {

/// The plain bytes of a pbzx, the form of newer packages' payloads: after "pbzx" and the size that chunks have as a
/// rule come chunks, each of its plain size, its stored size (8 bytes each, big-endian) and its data, which is an xz
/// when the two sizes differ and plain otherwise. The source must outlive it.
class PbzxSource : public ByteSource {
public:
    explicit PbzxSource(ByteSource &compressed);
    ~PbzxSource() override;

    /// Whether the stream begins as a pbzx does.
    [[nodiscard]] static bool isPbzx(ByteSource &source);

protected:
    std::size_t fill(std::span<char> buffer) override;

private:
    class Input;
    class Chunk;

    bool openChunk();

    std::unique_ptr<Input> input_;
    std::unique_ptr<Chunk> stored_;
    std::unique_ptr<ByteSource> plain_; ///< null when the chunk is stored as it is
    std::span<const char> waiting_;
    std::uint64_t left_ = 0; ///< plain bytes of the chunk to come
};

} // namespace vant::tools

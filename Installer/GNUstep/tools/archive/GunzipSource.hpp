#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <memory>

namespace vant::tools {

/// The decompressed bytes of a gzip stream of one or several members. Unlike the archive library's own filter it tests
/// each member's checksum and length, so that a flipped byte does not pass for data. Bytes behind the last member are
/// ignored, as gzip does. The source must outlive it.
class GunzipSource : public ByteSource {
public:
    explicit GunzipSource(ByteSource &compressed);
    ~GunzipSource() override;

    /// Whether the stream begins as a gzip does.
    [[nodiscard]] static bool isGzip(ByteSource &source);

protected:
    std::size_t fill(std::span<char> buffer) override;

private:
    struct State;

    bool refill();
    bool nextMember();

    ByteSource &compressed_;
    std::unique_ptr<State> state_;
};

} // namespace vant::tools

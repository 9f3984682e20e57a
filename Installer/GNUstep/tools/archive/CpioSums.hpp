#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <cstdint>
#include <string>

namespace vant::tools {

/// The bytes of a cpio of the kind that has a sum in each header ("070702"), passed on as they are, with the sums
/// tested on the way: the archive library ignores them. The source must outlive it.
class CpioSums : public ByteSource {
public:
    explicit CpioSums(ByteSource &cpio) : cpio_(cpio) {}

    /// Whether the stream begins as such a cpio does.
    [[nodiscard]] static bool hasSums(ByteSource &source);

protected:
    std::size_t fill(std::span<char> buffer) override;

private:
    enum class Part { Header, Name, Data, Behind };

    void feed(std::span<const char> bytes);
    void takeHeader(std::span<const char> bytes);
    void takePart(std::span<const char> bytes);
    void readHeader();
    void endOfPart();

    ByteSource &cpio_;
    std::span<const char> waiting_;
    Part part_ = Part::Header;
    std::string header_;
    std::uint64_t left_ = 0;    ///< bytes of the part to come, padding included
    std::uint64_t padding_ = 0; ///< how many of them count for nothing
    std::uint32_t nameLength_ = 0;
    std::uint32_t size_ = 0;
    std::uint32_t sum_ = 0;
    std::uint32_t expected_ = 0;
};

} // namespace vant::tools

#include "GNUstep/tools/archive/PlainBytes.hpp"

#include "GNUstep/tools/archive/CpioSums.hpp"
#include "GNUstep/tools/archive/GunzipSource.hpp"
#include "GNUstep/tools/archive/LzmaSource.hpp"
#include "GNUstep/tools/archive/PbzxSource.hpp"

namespace vant::tools {

PlainBytes::PlainBytes(ByteSource &source) : last_(&source) {
    if (GunzipSource::isGzip(source))
        owned_.push_back(std::make_unique<GunzipSource>(source));
    else if (LzmaSource::isLzma(source))
        owned_.push_back(std::make_unique<LzmaSource>(source));
    else if (PbzxSource::isPbzx(source))
        owned_.push_back(std::make_unique<PbzxSource>(source));
    last_ = owned_.empty() ? &source : owned_.back().get();
    if (!CpioSums::hasSums(*last_))
        return;
    owned_.push_back(std::make_unique<CpioSums>(*last_));
    last_ = owned_.back().get();
}

} // namespace vant::tools

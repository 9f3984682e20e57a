#pragma once
#include "GNUstep/download/Transfer.hpp"

#include <sys/types.h>

namespace vant {

/// A file of this machine, read in slices. It reports to its transfer, which must outlive it.
class LocalSource : public DownloadSource {
public:
    LocalSource(std::string path, Transfer &transfer, const Slice &slice);
    LocalSource(const LocalSource &) = delete;
    LocalSource &operator=(const LocalSource &) = delete;
    ~LocalSource() override;

    [[nodiscard]] DownloadError resume() override;
    [[nodiscard]] bool yielded() const noexcept override { return !held_ && !ended_; }
    [[nodiscard]] bool ended() const noexcept override { return ended_; }

private:
    [[nodiscard]] DownloadError open();

    std::string path_;
    Transfer &transfer_;
    const Slice &slice_;
    int descriptor_ = -1;
    off_t offset_ = 0;
    bool held_ = false;
    bool ended_ = false;
};

} // namespace vant

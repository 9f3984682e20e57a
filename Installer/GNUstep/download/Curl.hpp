#pragma once
#include "GNUstep/download/ResponseHead.hpp"
#include "GNUstep/download/Transfer.hpp"

#include <curl/curl.h>

namespace vant {

/// One request to a server, as a handle of a multi interface. It reports to its transfer, which must outlive it.
class CurlSource : public DownloadSource {
public:
    CurlSource(CURLM *multi, Transfer &transfer, const Slice &slice);
    CurlSource(const CurlSource &) = delete;
    CurlSource &operator=(const CurlSource &) = delete;
    ~CurlSource() override;

    [[nodiscard]] DownloadError resume() override;
    [[nodiscard]] bool yielded() const noexcept override { return yielded_; }

    /// The transfer that a handle was made for.
    [[nodiscard]] static Transfer *transferForHandle(CURL *easy) noexcept;
    /// What the library's result for a handle means; only while its source exists.
    [[nodiscard]] static DownloadError errorForHandle(CURL *easy, CURLcode result) noexcept;

private:
    static std::size_t onHeader(char *bytes, std::size_t size, std::size_t count, void *source);
    static std::size_t onBody(char *bytes, std::size_t size, std::size_t count, void *source);
    void configure();
    void addFields();
    void addBody();
    [[nodiscard]] bool addHeaderLine(std::string_view line);
    void announce();
    void yieldAtEndOfSlice();

    CURLM *multi_;
    CURL *easy_;
    Transfer &transfer_;
    curl_slist *fields_ = nullptr;
    ResponseHead head_;
    const Slice &slice_;
    bool announced_ = false;
    bool yielded_ = false;
};

} // namespace vant

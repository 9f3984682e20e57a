#pragma once
#include <curl/curl.h>
#include <memory>

namespace vant {

struct MultiCloser {
    void operator()(CURLM *multi) const noexcept { curl_multi_cleanup(multi); }
};

/// Owner of a multi interface of libcurl; its end closes the connections kept for later requests.
using MultiHandle = std::unique_ptr<CURLM, MultiCloser>;

/// A multi interface none of whose descriptors reaches a child process.
[[nodiscard]] MultiHandle makeMultiHandle();

} // namespace vant

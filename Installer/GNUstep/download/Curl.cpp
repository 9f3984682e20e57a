#include "GNUstep/download/Curl.hpp"

#include "GNUstep/download/Address.hpp"
#include "GNUstep/download/platform/OpenDescriptors.hpp"

#include <cstdlib>
#include <string>

namespace vant {
namespace {

constexpr long bufferSize = 512L * 1024;
/// Never reached: the transfer's own idle time-out ends an attempt to connect. The library's would also count the time
/// in which the thread was busy elsewhere, and blame the server for it.
constexpr long connectSeconds = 24L * 60 * 60;

curl_socket_t openSocket(void * /*context*/, curlsocktype /*purpose*/, curl_sockaddr *address) {
    return makeSocket(address->family, address->socktype, address->protocol);
}

bool isOneLine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool hasField(const DownloadRequest &request, std::string_view name) {
    DownloadResponse lookup;
    lookup.fields = request.fields;
    return !lookup.field(name).empty();
}

} // namespace

CurlSource::CurlSource(CURLM *multi, Transfer &transfer, const Slice &slice)
    : multi_(multi), easy_(curl_easy_init()), transfer_(transfer), slice_(slice) {
    configure();
    addFields();
    addBody();
    curl_multi_add_handle(multi_, easy_);
}

CurlSource::~CurlSource() {
    curl_multi_remove_handle(multi_, easy_);
    curl_easy_cleanup(easy_);
    curl_slist_free_all(fields_);
}

void CurlSource::configure() {
    const auto &address = transfer_.request().address;
    curl_easy_setopt(easy_, CURLOPT_URL, address.c_str());
    curl_easy_setopt(easy_, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy_, CURLOPT_PROTOCOLS_STR, "http,https,ftp");
    curl_easy_setopt(easy_, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy_, CURLOPT_PRIVATE, &transfer_);
    curl_easy_setopt(easy_, CURLOPT_HEADERFUNCTION, &CurlSource::onHeader);
    curl_easy_setopt(easy_, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(easy_, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, &CurlSource::onBody);
    curl_easy_setopt(easy_, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy_, CURLOPT_BUFFERSIZE, bufferSize);
    curl_easy_setopt(easy_, CURLOPT_OPENSOCKETFUNCTION, &openSocket);
    curl_easy_setopt(easy_, CURLOPT_COOKIEFILE, "");
    curl_easy_setopt(easy_, CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl_easy_setopt(easy_, CURLOPT_NOSIGNAL, 1L);
    // Abandoning a download whose host name is still being resolved must not block the thread.
    curl_easy_setopt(easy_, CURLOPT_QUICK_EXIT, 1L);
    // The command-line tool reads this variable, the library does not.
    if (const char *const trusted = std::getenv("CURL_CA_BUNDLE"); trusted != nullptr && *trusted != '\0')
        curl_easy_setopt(easy_, CURLOPT_CAINFO, trusted);
    if (isLoopback(addressHost(address)))
        curl_easy_setopt(easy_, CURLOPT_PROXY, "");
}

void CurlSource::addFields() {
    for (const auto &[name, value] : transfer_.request().fields) {
        if (name.empty() || !isOneLine(name) || !isOneLine(value))
            continue;
        std::string line = name;
        // A field without a value is sent only if it is written in this form.
        line.append(value.empty() ? ";" : ": ").append(value);
        fields_ = curl_slist_append(fields_, line.c_str());
    }
    if (!hasField(transfer_.request(), "Accept-Encoding"))
        fields_ = curl_slist_append(fields_, "Accept-Encoding: gzip, deflate");
    curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, fields_);
}

void CurlSource::addBody() {
    const auto &[address, method, fields, body, timeOut] = transfer_.request();
    if (!body.empty()) {
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDS, body.data());
    }
    if (method == "HEAD")
        curl_easy_setopt(easy_, CURLOPT_NOBODY, 1L);
    else if (!method.empty() && isOneLine(method) && (method != "GET" || !body.empty()))
        curl_easy_setopt(easy_, CURLOPT_CUSTOMREQUEST, method.c_str());
}

DownloadError CurlSource::resume() {
    yielded_ = false;
    const auto result = curl_easy_pause(easy_, CURLPAUSE_CONT);
    // No connection is left to go on with: the transfer has ended meanwhile, and how is still to be collected.
    if (result == CURLE_BAD_FUNCTION_ARGUMENT)
        return DownloadError::none;
    return errorForHandle(easy_, result);
}

Transfer *CurlSource::transferForHandle(CURL *easy) noexcept {
    char *transfer = nullptr;
    curl_easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
    return reinterpret_cast<Transfer *>(transfer);
}

DownloadError CurlSource::errorForHandle(CURL *easy, CURLcode result) noexcept {
    long systemError = 0;
    curl_easy_getinfo(easy, CURLINFO_OS_ERRNO, &systemError);
    return errorForTransfer(result, systemError);
}

std::size_t CurlSource::onHeader(char *bytes, std::size_t size, std::size_t count, void *source) {
    return static_cast<CurlSource *>(source)->addHeaderLine({bytes, size * count}) ? size * count : 0;
}

std::size_t CurlSource::onBody(char *bytes, std::size_t size, std::size_t count, void *source) {
    auto &self = *static_cast<CurlSource *>(source);
    if (!self.announced_)
        self.announce();
    switch (self.transfer_.receive({bytes, size * count})) {
    case Transfer::Receipt::accepted:
        self.yieldAtEndOfSlice();
        return size * count;
    case Transfer::Receipt::paused:
        return CURL_WRITEFUNC_PAUSE;
    case Transfer::Receipt::rejected:
        break;
    }
    return CURL_WRITEFUNC_ERROR;
}

void CurlSource::yieldAtEndOfSlice() {
    // The library reads on for as long as the socket has more; it honours a pause between two of its buffers.
    if (yielded_ || !slice_.isOver())
        return;
    yielded_ = true;
    curl_easy_pause(easy_, CURLPAUSE_RECV);
}

bool CurlSource::addHeaderLine(std::string_view line) {
    if (announced_)
        return true;
    switch (head_.addLine(line)) {
    case ResponseHead::State::incomplete:
        return true;
    case ResponseHead::State::complete:
        announce();
        return true;
    case ResponseHead::State::tooLong:
        transfer_.reject(DownloadError::badServerResponse);
    }
    return false;
}

void CurlSource::announce() {
    announced_ = true;
    auto response = head_.response();
    response.address = transfer_.request().address;
    response.expectedLength = announcedLength(response);
    if (response.status == 0) {
        curl_off_t length = -1;
        curl_easy_getinfo(easy_, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        response.expectedLength = length;
    }
    transfer_.receiveResponse(std::move(response));
}

} // namespace vant

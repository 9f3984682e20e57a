#include "DownloadErrors.hpp"

#include <algorithm>
#include <array>

namespace vant::host {
namespace {

struct KnownError {
    int code;
    DownloadFault fault;
    std::string_view words;
};

// clang-format off
constexpr std::array<KnownError, 24> knownErrors = {{
    {-1000, DownloadFault::Answer,     "the address is malformed"},
    {-1001, DownloadFault::Connection, "the server took too long to answer"},
    {-1002, DownloadFault::Answer,     "the address is of a kind that cannot be downloaded"},
    {-1003, DownloadFault::Connection, "the server cannot be found"},
    {-1004, DownloadFault::Connection, "the server cannot be connected to"},
    {-1005, DownloadFault::Connection, "the connection was lost"},
    {-1006, DownloadFault::Connection, "the server's name cannot be looked up"},
    {-1007, DownloadFault::Answer,     "the server redirects without end"},
    {-1009, DownloadFault::Connection, "there is no connection to the network"},
    {-1010, DownloadFault::Answer,     "the server redirects to nowhere"},
    {-1011, DownloadFault::Answer,     "the server gave no valid answer"},
    {-1013, DownloadFault::Answer,     "the server asks for a name and a password"},
    {-1015, DownloadFault::Answer,     "the answer cannot be decoded"},
    {-1016, DownloadFault::Answer,     "the answer cannot be decoded"},
    {-1100, DownloadFault::Answer,     "the file does not exist"},
    {-1101, DownloadFault::Answer,     "the file is a folder"},
    {-1102, DownloadFault::Answer,     "the file may not be read"},
    {-1200, DownloadFault::Connection, "no secure connection can be made"},
    {-1202, DownloadFault::Connection, "the server's certificate is not trusted"},
    {-3000, DownloadFault::Disk,       "the file cannot be created"},
    {-3001, DownloadFault::Disk,       "the file cannot be opened"},
    {-3002, DownloadFault::Disk,       "the file cannot be closed"},
    {-3003, DownloadFault::Disk,       "the file cannot be written"},
    {-3005, DownloadFault::Disk,       "the file cannot be moved to its place"},
}};
// clang-format on

constexpr KnownError unknown = {0, DownloadFault::Answer, "unknown error"};

const KnownError &errorOf(int code) noexcept {
    const auto *const found = std::ranges::find(knownErrors, code, &KnownError::code);
    return found != knownErrors.end() ? *found : unknown;
}

} // namespace

std::string_view downloadErrorWords(int code) noexcept {
    return errorOf(code).words;
}

DownloadFault downloadFault(int code) noexcept {
    return errorOf(code).fault;
}

} // namespace vant::host

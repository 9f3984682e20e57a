#include "GNUstep/download/Errors.hpp"

#include <algorithm>
#include <array>
#include <cerrno>

namespace vant {
namespace {

struct TransferError {
    CURLcode result;
    DownloadError error;
};

// clang-format off
constexpr auto transferErrors = std::to_array<TransferError>({
    {CURLE_OK,                      DownloadError::none},
    {CURLE_URL_MALFORMAT,           DownloadError::badAddress},
    {CURLE_OPERATION_TIMEDOUT,      DownloadError::timedOut},
    {CURLE_COULDNT_RESOLVE_HOST,    DownloadError::cannotFindHost},
    {CURLE_COULDNT_RESOLVE_PROXY,   DownloadError::cannotFindHost},
    {CURLE_RECV_ERROR,              DownloadError::connectionLost},
    {CURLE_SEND_ERROR,              DownloadError::connectionLost},
    {CURLE_GOT_NOTHING,             DownloadError::connectionLost},
    {CURLE_PARTIAL_FILE,            DownloadError::connectionLost},
    // The scheme was checked before: here it is an answer in a protocol that was not asked for.
    {CURLE_UNSUPPORTED_PROTOCOL,    DownloadError::badServerResponse},
    {CURLE_WEIRD_SERVER_REPLY,      DownloadError::badServerResponse},
    {CURLE_LOGIN_DENIED,            DownloadError::authenticationRequired},
    {CURLE_REMOTE_FILE_NOT_FOUND,   DownloadError::fileDoesNotExist},
    {CURLE_FTP_COULDNT_RETR_FILE,   DownloadError::fileDoesNotExist},
    {CURLE_REMOTE_ACCESS_DENIED,    DownloadError::noPermissionToRead},
    {CURLE_SSL_CONNECT_ERROR,       DownloadError::secureConnectionFailed},
    {CURLE_SSL_CIPHER,              DownloadError::secureConnectionFailed},
    {CURLE_PEER_FAILED_VERIFICATION, DownloadError::certificateUntrusted},
    {CURLE_SSL_CACERT_BADFILE,      DownloadError::certificateUntrusted},
    {CURLE_SSL_ISSUER_ERROR,        DownloadError::certificateUntrusted},
});
// clang-format on

DownloadError errorForConnecting(long systemError) noexcept {
    switch (systemError) {
    case ENETUNREACH:
    case ENETDOWN:
        return DownloadError::notConnected;
    case ETIMEDOUT:
        return DownloadError::timedOut;
    default:
        return DownloadError::cannotConnect;
    }
}

} // namespace

DownloadError errorForTransfer(CURLcode result, long systemError) noexcept {
    if (result == CURLE_COULDNT_CONNECT)
        return errorForConnecting(systemError);
    const auto *const found = std::ranges::find(transferErrors, result, &TransferError::result);
    return found == transferErrors.end() ? DownloadError::unknown : found->error;
}

DownloadError errorForOpening(int systemError, bool exists) noexcept {
    if (systemError == ENOSPC || systemError == EDQUOT)
        return DownloadError::cannotWriteFile;
    return exists ? DownloadError::cannotOpenFile : DownloadError::cannotCreateFile;
}

DownloadError errorForReading(int systemError) noexcept {
    switch (systemError) {
    case EACCES:
    case EPERM:
        return DownloadError::noPermissionToRead;
    case EISDIR:
        return DownloadError::fileIsFolder;
    default:
        return DownloadError::fileDoesNotExist;
    }
}

} // namespace vant

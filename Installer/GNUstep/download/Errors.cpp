#include "GNUstep/download/Errors.hpp"

#include <cerrno>

namespace vant {
namespace {

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
    switch (result) {
    case CURLE_OK:
        return DownloadError::none;
    case CURLE_URL_MALFORMAT:
        return DownloadError::badAddress;
    case CURLE_OPERATION_TIMEDOUT:
        return DownloadError::timedOut;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return DownloadError::cannotFindHost;
    case CURLE_COULDNT_CONNECT:
        return errorForConnecting(systemError);
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
        return DownloadError::connectionLost;
    // The scheme has been looked at before: here it is an answer in no protocol that was asked for.
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
        return DownloadError::badServerResponse;
    case CURLE_LOGIN_DENIED:
        return DownloadError::authenticationRequired;
    case CURLE_REMOTE_FILE_NOT_FOUND:
    case CURLE_FTP_COULDNT_RETR_FILE:
        return DownloadError::fileDoesNotExist;
    case CURLE_REMOTE_ACCESS_DENIED:
        return DownloadError::noPermissionToRead;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CIPHER:
        return DownloadError::secureConnectionFailed;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
        return DownloadError::certificateUntrusted;
    default:
        return DownloadError::unknown;
    }
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

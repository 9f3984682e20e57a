#pragma once
#include <curl/curl.h>

namespace vant {

/// Why a download failed: the platform's codes in its URL error domain.
enum class DownloadError : int {
    none = 0,
    unknown = -1,
    badAddress = -1000,
    timedOut = -1001,
    unsupportedAddress = -1002,
    cannotFindHost = -1003,
    cannotConnect = -1004,
    connectionLost = -1005,
    tooManyRedirects = -1007,
    notConnected = -1009,
    redirectToNowhere = -1010,
    badServerResponse = -1011,
    authenticationRequired = -1013,
    cannotDecode = -1015,
    fileDoesNotExist = -1100,
    fileIsFolder = -1101,
    noPermissionToRead = -1102,
    secureConnectionFailed = -1200,
    certificateUntrusted = -1202,
    cannotCreateFile = -3000,
    cannotOpenFile = -3001,
    cannotCloseFile = -3002,
    cannotWriteFile = -3003,
};

/// The error for the result of a transfer. `systemError` is the errno of the attempt to connect, 0 when there is none.
[[nodiscard]] DownloadError errorForTransfer(CURLcode result, long systemError) noexcept;

/// The error for a destination that can't be created. `exists`: something stood at the path before.
[[nodiscard]] DownloadError errorForOpening(int systemError, bool exists) noexcept;

/// The error for a local file that can't be read.
[[nodiscard]] DownloadError errorForReading(int systemError) noexcept;

} // namespace vant

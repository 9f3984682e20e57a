#pragma once
#include "GNUstep/download/Messages.hpp"
#import <Foundation/Foundation.h>

namespace vant {

/// What a request asks for. A nil request, or one without an address, gives an empty address.
[[nodiscard]] DownloadRequest downloadRequest(NSURLRequest *request);

/// The request for `values` made from one that it stems from, autoreleased: what the values do not cover stays.
[[nodiscard]] NSURLRequest *urlRequest(const DownloadRequest &values, NSURLRequest *original);

/// The response as the platform gives it, autoreleased; an HTTP response where there is a status.
[[nodiscard]] NSURLResponse *urlResponse(const DownloadResponse &values);

/// The error as the platform gives it, autoreleased, with the failing address.
[[nodiscard]] NSError *urlError(DownloadError error, const std::string &address);

/// A text from a server, autoreleased: UTF-8, or Latin-1 where it is not.
[[nodiscard]] NSString *serverText(std::string_view text);

/// A file system path as the platform's string, autoreleased.
[[nodiscard]] NSString *filePath(const std::string &path);

} // namespace vant

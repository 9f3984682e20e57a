#include "GNUstep/download/Messages.hpp"

#include "GNUstep/download/Address.hpp"
#include "GNUstep/download/Names.hpp"

#include <algorithm>
#include <cctype>
#include <utility>

namespace vant {
namespace {

bool sameName(std::string_view left, std::string_view right) noexcept {
    return std::ranges::equal(left, right,
                              [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

bool isRedirect(int status) noexcept {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

std::string_view DownloadResponse::field(std::string_view name) const noexcept {
    const auto found =
        std::ranges::find_if(fields, [&](const HeaderField &field) { return sameName(field.name, name); });
    return found == fields.end() ? std::string_view{} : std::string_view(found->value);
}

std::optional<std::string> DownloadResponse::redirect() const {
    return isRedirect(status) ? redirectTarget(address, std::string(field("Location"))) : std::nullopt;
}

std::string_view DownloadResponse::mediaType() const noexcept {
    auto type = field("Content-Type");
    type = type.substr(0, type.find(';'));
    type = type.substr(0, type.find_last_not_of(" \t") + 1);
    return type.empty() ? "application/octet-stream" : type;
}

std::string DownloadResponse::suggestedName() const {
    return vant::suggestedName(field("Content-Disposition"), address);
}

DownloadRequest redirected(const DownloadRequest &request, int status, std::string target) {
    DownloadRequest next = request;
    const bool becomesGet =
        status == 303 ? request.method != "HEAD" : (status == 301 || status == 302) && request.method == "POST";
    if (becomesGet) {
        next.method = "GET";
        next.body.clear();
        std::erase_if(next.fields, [](const HeaderField &f) { return sameName(f.name, "Content-Type"); });
    }
    if (addressHost(target) != addressHost(request.address))
        std::erase_if(next.fields, [](const HeaderField &field) {
            return sameName(field.name, "Authorization") || sameName(field.name, "Cookie") ||
                   sameName(field.name, "Host");
        });
    next.address = std::move(target);
    return next;
}

DownloadMessage nextMessage(const DownloadStage &stage) noexcept {
    if (!stage.begun)
        return DownloadMessage::begin;
    if (stage.redirectPending)
        return DownloadMessage::redirect;
    if (stage.responsePending)
        return DownloadMessage::response;
    if (stage.dataPending && (stage.dataDue || stage.ended))
        return DownloadMessage::data;
    if (stage.ended && stage.failed)
        return DownloadMessage::fail;
    if (stage.responseDelivered && !stage.fileMade) {
        if (stage.destinationKnown)
            return DownloadMessage::create;
        return stage.decisionAsked ? DownloadMessage::none : DownloadMessage::decide;
    }
    return stage.ended && stage.fileMade ? DownloadMessage::finish : DownloadMessage::none;
}

} // namespace vant

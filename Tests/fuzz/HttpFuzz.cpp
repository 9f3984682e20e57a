#include "GNUstep/download/Address.hpp"
#include "GNUstep/download/Names.hpp"
#include "GNUstep/download/ResponseHead.hpp"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

/// A name that a server suggests must stay inside the folder that it is put in.
void checkName(const std::string &name) {
    require(!name.empty() && name != "." && name != "..");
    require(name.find_first_of(std::string_view("/\0", 2)) == std::string::npos);
}

void checkHead(std::string_view text) {
    vant::ResponseHead head;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = text.substr(0, end == std::string_view::npos ? end : end + 1);
        text.remove_prefix(line.size());
        if (head.addLine(line) != vant::ResponseHead::State::incomplete)
            break;
    }
    auto response = head.response();
    require(response.status >= 0 && vant::announcedLength(response) >= -1);
    response.address = "https://host/folder/file";
    checkName(response.suggestedName());
    require(!response.mediaType().empty());
    if (const auto target = response.redirect())
        (void)vant::errorForRedirect(response.address, *target);
}

void checkAddress(const std::string &address) {
    if (vant::errorForAddress(address) == vant::DownloadError::none)
        require(vant::addressScheme(address) == "file" || !vant::addressHost(address).empty());
    for (const char *from : {"https://host/a", "http://host/a"})
        if (vant::errorForRedirect(from, address) == vant::DownloadError::none)
            require(vant::addressScheme(address).starts_with("http"));
    checkName(vant::suggestedName("", address));
    checkName(vant::suggestedName("attachment; filename=\"" + address + "\"", "http://host/"));
    checkName(vant::suggestedName("attachment; filename=" + address, "http://host/"));
    checkName(vant::suggestedName(address, "http://host/"));
    if (const auto target = vant::redirectTarget("http://host/a/b", address))
        (void)vant::addressHost(*target);
}

} // namespace

// The first byte tells what the rest is: a response's head, or an address and a Content-Disposition.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    if (bytes.empty())
        return 0;
    if ((bytes.front() & 1) != 0)
        checkHead(bytes.substr(1));
    else
        checkAddress(std::string(bytes.substr(1)));
    return 0;
}

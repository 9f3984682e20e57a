#include "site/ContentKind.hpp"

#include <algorithm>
#include <array>
#include <fstream>

namespace vant::media {
namespace {

struct Row {
    std::string_view start;
    ContentKind kind;
};

constexpr auto rows = std::to_array<Row>({
    {"PK\x03\x04", ContentKind::Zip},
    {"PK\x05\x06", ContentKind::Zip},
    {"070701", ContentKind::Cpio},
    {"070702", ContentKind::Cpio},
    {"070707", ContentKind::Cpio},
    {"\xC7\x71", ContentKind::Cpio},
    {"\x71\xC7", ContentKind::Cpio},
    {"\x1F\x8B", ContentKind::Compressed},
    {"BZh", ContentKind::Compressed},
    {"xar!", ContentKind::FlatPackage},
});

bool holdsMarkup(std::string_view start) {
    std::string lower(start);
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower.find("<html") != std::string::npos || lower.find("<!doctype html") != std::string::npos;
}

} // namespace

ContentKind contentKind(std::string_view start) noexcept {
    if (start.empty())
        return ContentKind::Empty;
    const auto *const found = std::ranges::find_if(rows, [&](const Row &row) { return start.starts_with(row.start); });
    if (found != rows.end())
        return found->kind;
    return holdsMarkup(start) ? ContentKind::WebPage : ContentKind::Unknown;
}

ContentKind contentKindOfFile(const std::string &path) {
    std::array<char, 512> bytes{};
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), bytes.size());
    return contentKind({bytes.data(), static_cast<std::size_t>(file.gcount())});
}

std::string_view contentName(ContentKind kind) noexcept {
    switch (kind) {
    case ContentKind::Empty:
        return "an empty file";
    case ContentKind::Zip:
        return "a zip";
    case ContentKind::Cpio:
        return "a cpio";
    case ContentKind::Compressed:
        return "compressed by gzip or bzip2";
    case ContentKind::FlatPackage:
        return "a package that is in no archive";
    case ContentKind::WebPage:
        return "a web page";
    case ContentKind::Unknown:
        break;
    }
    return "of no form that is known";
}

bool suits(ContentKind content, ArchiveKind archive) noexcept {
    using enum ContentKind;
    if (archive == ArchiveKind::Zip)
        return content == Zip || content == Unknown;
    return content == Cpio || content == Compressed || content == Unknown;
}

} // namespace vant::media

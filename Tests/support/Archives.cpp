#include "Archives.hpp"

#include <cstdint>
#include <cstdio>

namespace vant::test {
namespace {

std::uint32_t checksum(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

void append(std::string &to, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        to.push_back(static_cast<char>(value >> (8 * i)));
}

std::uint32_t length(std::string_view text) {
    return static_cast<std::uint32_t>(text.size());
}

// The fields that a file's own header and its entry in the directory have in common.
void appendCommon(std::string &to, const ArchiveEntry &entry) {
    append(to, 10, 2);     // version needed
    append(to, 0x0800, 2); // names are UTF-8
    append(to, 0, 2);      // stored
    append(to, 0x6000, 2); // noon
    append(to, 0x5A21, 2); // of the first day of 2025
    append(to, checksum(entry.content), 4);
    append(to, length(entry.content), 4);
    append(to, length(entry.content), 4);
    append(to, length(entry.name), 2);
    append(to, 0, 2); // no extra field
}

void appendToDirectory(std::string &directory, const ArchiveEntry &entry, std::uint32_t offset) {
    append(directory, 0x02014B50, 4);
    append(directory, 0x0314, 2); // made on Unix
    appendCommon(directory, entry);
    append(directory, 0, 2); // no comment
    append(directory, 0, 4); // first disk, no internal attributes
    append(directory, 0100644U << 16, 4);
    append(directory, offset, 4);
    directory += entry.name;
}

void appendOctal(std::string &to, std::uint32_t value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*o", digits, value);
    to += text;
}

void appendToCpio(std::string &to, const ArchiveEntry &entry, std::uint32_t number, std::uint32_t mode) {
    to += "070707";
    appendOctal(to, 1, 6);
    appendOctal(to, number, 6);
    appendOctal(to, mode, 6);
    for (const std::uint32_t field : {0U, 0U, 1U, 0U}) // owner, group, links, device
        appendOctal(to, field, 6);
    appendOctal(to, 0, 11);
    appendOctal(to, length(entry.name) + 1, 6);
    appendOctal(to, length(entry.content), 11);
    to += entry.name;
    to.push_back('\0');
    to += entry.content;
}

} // namespace

std::string zipOf(const std::vector<ArchiveEntry> &entries) {
    std::string archive;
    std::string directory;
    for (const ArchiveEntry &entry : entries) {
        appendToDirectory(directory, entry, length(archive));
        append(archive, 0x04034B50, 4);
        appendCommon(archive, entry);
        archive += entry.name;
        archive += entry.content;
    }
    const std::uint32_t start = length(archive);
    archive += directory;
    append(archive, 0x06054B50, 4);
    append(archive, 0, 4); // one disk
    append(archive, static_cast<std::uint32_t>(entries.size()), 2);
    append(archive, static_cast<std::uint32_t>(entries.size()), 2);
    append(archive, length(directory), 4);
    append(archive, start, 4);
    append(archive, 0, 2);
    return archive;
}

std::string cpioOf(const std::vector<ArchiveEntry> &entries) {
    std::string archive;
    std::uint32_t number = 1;
    for (const ArchiveEntry &entry : entries)
        appendToCpio(archive, entry, number++, 0100644);
    appendToCpio(archive, {"TRAILER!!!", ""}, 0, 0);
    return archive;
}

std::string gzipStored(std::string_view text) {
    std::string coded("\x1F\x8B\x08\0\0\0\0\0\0\x03", 10);
    coded.push_back(1); // the last block, stored
    append(coded, length(text), 2);
    append(coded, ~length(text), 2);
    coded += text;
    append(coded, checksum(text), 4);
    append(coded, length(text), 4);
    return coded;
}

} // namespace vant::test

#include "ArchiveReader.hpp"

#include "ExpansionError.hpp"

#include <cerrno>
#include <new>

namespace vant {

namespace {

constexpr std::size_t blockSize = std::size_t{128} * 1024;

/// The library's read callback. No exception may pass through the library's frames.
la_ssize_t readSource(archive *reader, void *data, const void **bytes) {
    try {
        const auto next = static_cast<ByteSource *>(data)->next();
        *bytes = next.data();
        return static_cast<la_ssize_t>(next.size());
    } catch (const std::exception &error) {
        archive_set_error(reader, EIO, "%s", error.what());
        return ARCHIVE_FATAL;
    }
}

} // namespace

ArchiveReader::ArchiveReader() : handle_(archive_read_new()) {
    if (!handle_)
        throw std::bad_alloc();
}

ArchiveReader ArchiveReader::zip(const std::string &path) {
    ArchiveReader reader;
    archive_read_support_format_zip_seekable(reader.handle());
    reader.openFile(path);
    return reader;
}

ArchiveReader ArchiveReader::xar(const std::string &path) {
    ArchiveReader reader;
    archive_read_support_format_xar(reader.handle());
    reader.openFile(path);
    return reader;
}

ArchiveReader ArchiveReader::cpio(ByteSource &source) {
    ArchiveReader reader;
    archive_read_support_format_cpio(reader.handle());
    reader.openSource(source);
    return reader;
}

ArchiveReader ArchiveReader::payload(ByteSource &source) {
    ArchiveReader reader;
    archive_read_support_format_cpio(reader.handle());
    archive_read_support_format_tar(reader.handle());
    reader.openSource(source);
    return reader;
}

void ArchiveReader::openFile(const std::string &path) {
    std::uint64_t size = 0;
    if (const auto file = openRegularFile(path, size); size == 0)
        throw ExpansionError("the archive is empty");
    check(archive_read_open_filename(handle(), path.c_str(), blockSize), "the archive cannot be opened");
}

void ArchiveReader::openSource(ByteSource &source) {
    archive_read_support_filter_bzip2(handle());
    check(archive_read_open(handle(), &source, nullptr, readSource, nullptr), "the archive cannot be opened");
}

void ArchiveReader::check(int result, const char *otherwise) const {
    if (result == ARCHIVE_OK)
        return;
    const char *reason = archive_error_string(handle());
    throw ExpansionError(reason != nullptr ? reason : otherwise);
}

archive_entry *ArchiveReader::next() {
    archive_entry *entry = nullptr;
    const int result = archive_read_next_header(handle(), &entry);
    if (result == ARCHIVE_EOF)
        return nullptr;
    check(result, "the archive is damaged");
    return entry;
}

bool ArchiveReader::nextBlock(DataBlock &block) {
    const void *bytes = nullptr;
    std::size_t count = 0;
    const int result = archive_read_data_block(handle(), &bytes, &count, &block.offset);
    if (result == ARCHIVE_EOF)
        return false;
    check(result, "an entry of the archive is damaged");
    block.bytes = std::span(static_cast<const char *>(bytes), count);
    return true;
}

} // namespace vant

#include "GNUstep/tools/archive/ArchiveReader.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <algorithm>
#include <cerrno>
#include <new>

namespace vant::tools {

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

std::string nameOf(archive_entry *entry) {
    const char *name = archive_entry_pathname(entry);
    if (name == nullptr)
        throw ExpansionError("the archive holds an entry whose name cannot be read");
    return name;
}

Entry::Kind kindOf(archive_entry *entry) {
    if (archive_entry_hardlink(entry) != nullptr)
        return Entry::Kind::HardLink;
    switch (archive_entry_filetype(entry)) {
    case AE_IFDIR:
        return Entry::Kind::Folder;
    case AE_IFLNK:
        return Entry::Kind::Link;
    case AE_IFREG:
        return Entry::Kind::File;
    default:
        return Entry::Kind::Other;
    }
}

} // namespace

ArchiveReader::ArchiveReader() : handle_(archive_read_new()) {
    if (!handle_)
        throw std::bad_alloc();
}

std::unique_ptr<ArchiveReader> ArchiveReader::xar(const std::string &path) {
    std::unique_ptr<ArchiveReader> reader(new ArchiveReader);
    archive_read_support_format_xar(reader->handle());
    reader->openFile(path);
    return reader;
}

std::unique_ptr<ArchiveReader> ArchiveReader::cpio(ByteSource &source) {
    std::unique_ptr<ArchiveReader> reader(new ArchiveReader);
    archive_read_support_format_cpio(reader->handle());
    reader->openSource(source);
    return reader;
}

std::unique_ptr<ArchiveReader> ArchiveReader::payload(ByteSource &source) {
    std::unique_ptr<ArchiveReader> reader(new ArchiveReader);
    archive_read_support_format_cpio(reader->handle());
    archive_read_support_format_tar(reader->handle());
    reader->openSource(source);
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

bool ArchiveReader::next(Entry &entry) {
    archive_entry *found = nullptr;
    const int result = archive_read_next_header(handle(), &found);
    if (result == ARCHIVE_EOF)
        return false;
    check(result, "the archive is damaged");
    entry = {};
    entry.path = nameOf(found);
    entry.kind = kindOf(found);
    entry.mode = archive_entry_perm(found);
    if (archive_entry_mtime_is_set(found) != 0)
        entry.modified = {.tv_sec = archive_entry_mtime(found), .tv_nsec = archive_entry_mtime_nsec(found)};
    entry.size = static_cast<std::uint64_t>(std::max<la_int64_t>(archive_entry_size(found), 0));
    entry.hasOtherNames = archive_entry_nlink(found) > 1;
    if (const char *first = archive_entry_hardlink(found); first != nullptr)
        entry.target = first;
    else if (const char *target = archive_entry_symlink(found); target != nullptr)
        entry.target = target;
    return true;
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

} // namespace vant::tools

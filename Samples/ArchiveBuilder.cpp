#include "ArchiveBuilder.hpp"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <clocale>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <utility>

namespace vant::samples {

namespace {

struct Freed {
    void operator()(archive *open) const { archive_write_free(open); }
    void operator()(archive_entry *entry) const { archive_entry_free(entry); }
};

/// Makes UTF-8 the thread's encoding for the while: the library translates names by way of it.
class Utf8Names {
public:
    Utf8Names() : own_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)), before_(::uselocale(own_)) {}
    Utf8Names(const Utf8Names &) = delete;
    Utf8Names &operator=(const Utf8Names &) = delete;
    ~Utf8Names() {
        ::uselocale(before_);
        ::freelocale(own_);
    }

private:
    locale_t own_;
    locale_t before_;
};

la_ssize_t append(archive * /*writer*/, void *bytes, const void *data, std::size_t count) {
    static_cast<std::string *>(bytes)->append(static_cast<const char *>(data), count);
    return static_cast<la_ssize_t>(count);
}

void check(archive *writer, int result) {
    if (result != ARCHIVE_OK)
        throw std::runtime_error(archive_error_string(writer));
}

int setFormat(archive *writer, Format format) {
    switch (format) {
    case Format::Zip:
        return archive_write_set_format_zip(writer);
    case Format::Cpio:
        return archive_write_set_format_cpio_odc(writer);
    case Format::NewCpio:
        return archive_write_set_format_cpio_newc(writer);
    case Format::Pax:
        return archive_write_set_format_pax_restricted(writer);
    case Format::Xar:
        return archive_write_set_format_xar(writer);
    }
    return ARCHIVE_FATAL;
}

int setFilter(archive *writer, Filter filter) {
    switch (filter) {
    case Filter::None:
        return archive_write_add_filter_none(writer);
    case Filter::Gzip:
        return archive_write_add_filter_gzip(writer);
    case Filter::Bzip2:
        return archive_write_add_filter_bzip2(writer);
    }
    return ARCHIVE_FATAL;
}

unsigned int typeOf(Item::Kind kind) {
    switch (kind) {
    case Item::Kind::Folder:
        return AE_IFDIR;
    case Item::Kind::Link:
        return AE_IFLNK;
    case Item::Kind::Pipe:
        return AE_IFIFO;
    default:
        return AE_IFREG;
    }
}

std::unique_ptr<archive_entry, Freed> entryOf(const Item &item, const std::vector<Item> &items) {
    std::unique_ptr<archive_entry, Freed> entry(archive_entry_new());
    archive_entry_set_pathname_utf8(entry.get(), item.path.c_str());
    archive_entry_set_filetype(entry.get(), typeOf(item.kind));
    archive_entry_set_perm(entry.get(), item.mode);
    archive_entry_set_mtime(entry.get(), itemTime, 0);
    archive_entry_set_size(entry.get(), 0);
    if (item.inode != 0) {
        archive_entry_set_dev(entry.get(), 1);
        archive_entry_set_ino64(entry.get(), item.inode);
        archive_entry_set_nlink(entry.get(),
                                static_cast<unsigned int>(std::ranges::count(items, item.inode, &Item::inode)));
    }
    if (item.kind == Item::Kind::Link)
        archive_entry_set_symlink_utf8(entry.get(), item.content.c_str());
    else if (item.kind == Item::Kind::HardLink)
        archive_entry_set_hardlink_utf8(entry.get(), item.content.c_str());
    else
        archive_entry_set_size(entry.get(), static_cast<la_int64_t>(item.content.size()));
    return entry;
}

} // namespace

Item file(std::string path, std::string content, mode_t mode) {
    return {.path = std::move(path), .content = std::move(content), .mode = mode};
}

Item folder(std::string path, mode_t mode) {
    return {.path = std::move(path), .kind = Item::Kind::Folder, .content = {}, .mode = mode};
}

Item link(std::string path, std::string target) {
    return {.path = std::move(path), .kind = Item::Kind::Link, .content = std::move(target), .mode = 0777};
}

Item hardLink(std::string path, std::string target) {
    return {.path = std::move(path), .kind = Item::Kind::HardLink, .content = std::move(target)};
}

std::string archiveOf(Format format, Filter filter, const std::vector<Item> &items) {
    const Utf8Names names;
    std::string bytes;
    const std::unique_ptr<archive, Freed> writer(archive_write_new());
    check(writer.get(), setFormat(writer.get(), format));
    check(writer.get(), setFilter(writer.get(), filter));
    if (format == Format::Zip)
        check(writer.get(), archive_write_set_options(writer.get(), "hdrcharset=UTF-8"));
    check(writer.get(), archive_write_set_bytes_in_last_block(writer.get(), 1));
    check(writer.get(), archive_write_open(writer.get(), &bytes, nullptr, append, nullptr));
    for (const auto &item : items) {
        check(writer.get(), archive_write_header(writer.get(), entryOf(item, items).get()));
        const bool hasData = item.kind == Item::Kind::File && !item.content.empty();
        if (hasData && archive_write_data(writer.get(), item.content.data(), item.content.size()) < 0)
            check(writer.get(), ARCHIVE_FATAL);
    }
    check(writer.get(), archive_write_close(writer.get()));
    return bytes;
}

std::filesystem::path writeArchive(const std::filesystem::path &path, Format format, Filter filter,
                                   const std::vector<Item> &items) {
    std::filesystem::create_directories(path.parent_path());
    const auto bytes = archiveOf(format, filter, items);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
        throw std::runtime_error("cannot write " + path.string());
    return path;
}

} // namespace vant::samples

#include "Expansion.hpp"

#include "ExpansionError.hpp"

#include <cerrno>
#include <map>
#include <vector>

namespace vant {

namespace {

class Run {
public:
    Run(ArchiveReader &reader, Destination &destination, const Limits &limits, const std::function<void()> &moved)
        : reader_(reader), destination_(destination), limits_(limits), moved_(moved) {}

    Expanded all() {
        while (archive_entry *entry = reader_.next()) {
            if (++done_.entries > limits_.entries)
                throw ExpansionError("the archive holds more than " + std::to_string(limits_.entries) + " entries");
            write(entry);
            moved_();
        }
        destination_.finish();
        return done_;
    }

private:
    static std::string nameOf(archive_entry *entry) {
        const char *name = archive_entry_pathname(entry);
        if (name == nullptr)
            name = archive_entry_pathname_utf8(entry);
        if (name == nullptr)
            throw ExpansionError("the archive holds an entry whose name cannot be read");
        return name;
    }

    static EntryPath pathOf(const std::string &name) {
        const auto path = safeEntryPath(name);
        if (!path)
            throw ExpansionError("\"" + name + "\": refused, the entry leads out of the destination");
        return *path;
    }

    void write(archive_entry *entry) {
        const auto path = pathOf(nameOf(entry));
        if (isMacMetadata(path))
            return;
        if (const char *existing = archive_entry_hardlink(entry); existing != nullptr)
            return writeHardLink(entry, path, pathOf(existing));
        switch (archive_entry_filetype(entry)) {
        case AE_IFDIR:
            return destination_.makeFolder(path, archive_entry_perm(entry), modified(entry));
        case AE_IFLNK:
            return destination_.makeLink(path, targetOf(entry, path));
        case AE_IFREG:
            return writeFirstName(entry, path);
        default:
            throw ExpansionError(path.text() + ": refused, neither a file nor a folder nor a link");
        }
    }

    static std::string targetOf(archive_entry *entry, const EntryPath &path) {
        const char *target = archive_entry_symlink(entry);
        if (target == nullptr)
            throw ExpansionError(path.text() + ": a link that leads nowhere");
        return target;
    }

    /// In one kind of cpio only the last name of a file brings its data: the first name is written again then, and the
    /// names between are tied to it anew. In the other kind every name repeats the data, and the first one was enough.
    void writeHardLink(archive_entry *entry, const EntryPath &path, const EntryPath &first) {
        destination_.makeHardLink(path, first);
        const auto waiting = waiting_.find(first.text());
        if (waiting == waiting_.end())
            return;
        waiting->second.push_back(path);
        if (archive_entry_size(entry) <= 0)
            return;
        writeFile(entry, first);
        for (const auto &name : waiting->second)
            destination_.makeHardLink(name, first);
        waiting_.erase(waiting);
    }

    void writeFirstName(archive_entry *entry, const EntryPath &path) {
        writeFile(entry, path);
        if (archive_entry_nlink(entry) > 1 && archive_entry_size(entry) == 0)
            waiting_.try_emplace(path.text());
    }

    void writeFile(archive_entry *entry, const EntryPath &path) {
        DataBlock block;
        bool more = reader_.nextBlock(block);
        // Extended attributes have no home here, and a package's twin "._Name.pkg" must not be taken for a package.
        if (more && isAppleDouble(path.name, {block.bytes.data(), block.bytes.size()}))
            return;
        auto file = destination_.createFile(path, archive_entry_perm(entry));
        try {
            for (; more; more = reader_.nextBlock(block))
                writeBlock(file.get(), block, path);
            if (!setModified(file.get(), modified(entry)) || !file.close())
                throw systemError(path.text(), errno);
        } catch (const ExpansionError &) {
            destination_.removeFile(path);
            throw;
        }
    }

    void writeBlock(int file, const DataBlock &block, const EntryPath &path) {
        done_.bytes += block.bytes.size();
        if (done_.bytes > limits_.bytes || block.offset > static_cast<std::int64_t>(limits_.bytes))
            throw ExpansionError("the archive holds more than " + std::to_string(limits_.bytes) + " bytes");
        writeAt(file, block.bytes, block.offset, path.text());
        moved_();
    }

    static std::timespec modified(archive_entry *entry) {
        if (archive_entry_mtime_is_set(entry) == 0)
            return {.tv_sec = 0, .tv_nsec = UTIME_NOW};
        return {.tv_sec = archive_entry_mtime(entry), .tv_nsec = archive_entry_mtime_nsec(entry)};
    }

    ArchiveReader &reader_;
    Destination &destination_;
    const Limits &limits_;
    const std::function<void()> &moved_;
    Expanded done_;
    /// Names of files whose data has not come yet, by their first name.
    std::map<std::string, std::vector<EntryPath>> waiting_;
};

} // namespace

Expanded expand(ArchiveReader &reader, Destination &destination, const Limits &limits,
                const std::function<void()> &moved) {
    return Run(reader, destination, limits, moved).all();
}

} // namespace vant

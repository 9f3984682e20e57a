#include "GNUstep/tools/tree/Expansion.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <algorithm>
#include <cerrno>
#include <map>
#include <vector>

namespace vant::tools {

namespace {

class Run {
public:
    Run(EntryReader &reader, Destination &destination, const Limits &limits, const std::function<void()> &moved)
        : reader_(reader), destination_(destination), limits_(limits), moved_(moved), room_(destination.freeBytes()) {}

    Expanded all() {
        makeSureOfRoom("the archive", reader_.announcedBytes().value_or(0));
        while (reader_.next(entry_)) {
            count();
            write();
            moved_();
        }
        destination_.finish();
        return done_;
    }

private:
    void count() {
        if (++done_.entries > limits_.entries)
            throw ExpansionError("the archive holds more than " + std::to_string(limits_.entries) + " entries");
        if (entry_.hasOtherNames && ++linked_ > limits_.linked)
            throw ExpansionError("the archive holds more than " + std::to_string(limits_.linked) +
                                 " entries with several names");
    }

    [[nodiscard]] EntryPath pathFrom(const std::string &name) const {
        const auto path = safeEntryPath(name);
        if (!path)
            throw ExpansionError("\"" + shortened(name) + "\": refused, the entry leads out of the destination");
        if (!destination_.hasRoomFor(*path))
            throw ExpansionError("\"" + shortened(name) + "\": refused, its path is too long to be opened");
        return *path;
    }

    void makeSureOfRoom(const std::string &name, std::uint64_t size) const {
        const auto room = std::min(room_, limits_.bytes);
        if (size <= room - std::min(done_.bytes, room))
            return;
        throw ExpansionError(name + ": refused, needs " + std::to_string(size) + " bytes and has room for " +
                             std::to_string(room - std::min(done_.bytes, room)));
    }

    void write() {
        const auto path = pathFrom(entry_.path);
        if (isMacMetadata(path))
            return;
        switch (entry_.kind) {
        case Entry::Kind::HardLink:
            return writeHardLink(path, pathFrom(entry_.target));
        case Entry::Kind::Folder:
            return destination_.makeFolder(path, entry_.mode, modified());
        case Entry::Kind::Link:
            return destination_.makeLink(path, entry_.target);
        case Entry::Kind::File:
            return writeFirstName(path);
        case Entry::Kind::Other:
            break;
        }
        throw ExpansionError(path.text() + ": refused, neither a file nor a folder nor a link");
    }

    /// In one kind of cpio only the last name of a file brings its data: the first name is written again then, and the
    /// names between are linked to it anew. In the other kind every name repeats the data, and the first one was
    /// enough.
    void writeHardLink(const EntryPath &path, const EntryPath &first) {
        destination_.makeHardLink(path, first);
        const auto waiting = waiting_.find(first.text());
        if (waiting == waiting_.end())
            return;
        waiting->second.push_back(path.text());
        if (entry_.size == 0)
            return;
        writeFile(first);
        for (const auto &name : waiting->second)
            destination_.makeHardLink(pathFrom(name), first);
        waiting_.erase(waiting);
    }

    void writeFirstName(const EntryPath &path) {
        writeFile(path);
        if (entry_.hasOtherNames && entry_.size == 0)
            waiting_.try_emplace(path.text());
    }

    void writeFile(const EntryPath &path) {
        makeSureOfRoom(path.text(), entry_.size);
        DataBlock block;
        bool more = reader_.nextBlock(block);
        // Extended attributes have no home here, and a package's twin "._Name.pkg" must not be taken for a package.
        if (more && isAppleDouble(path.name, {block.bytes.data(), block.bytes.size()}))
            return;
        auto file = destination_.createFile(path, entry_.mode);
        for (; more; more = reader_.nextBlock(block))
            writeBlock(file.get(), block, path);
        if (!setModified(file.get(), modified()) || !file.close())
            throw systemError(path.text(), errno);
    }

    void writeBlock(int file, const DataBlock &block, const EntryPath &path) {
        makeSureOfRoom(path.text(), block.bytes.size());
        if (block.offset < 0 || static_cast<std::uint64_t>(block.offset) > entry_.size)
            throw ExpansionError(path.text() + ": longer than the archive says");
        done_.bytes += block.bytes.size();
        writeAt(file, block.bytes, block.offset, path.text());
        moved_();
    }

    [[nodiscard]] std::timespec modified() const {
        return entry_.modified.value_or(std::timespec{.tv_sec = 0, .tv_nsec = UTIME_NOW});
    }

    EntryReader &reader_;
    Destination &destination_;
    const Limits &limits_;
    const std::function<void()> &moved_;
    const std::uint64_t room_;
    Entry entry_;
    Expanded done_;
    std::uint64_t linked_ = 0;
    /// Names of files whose data has not come yet, by their first name.
    std::map<std::string, std::vector<std::string>> waiting_;
};

} // namespace

Expanded expand(EntryReader &reader, Destination &destination, const Limits &limits,
                const std::function<void()> &moved) {
    return Run(reader, destination, limits, moved).all();
}

} // namespace vant::tools

#include "read/ArchiveListing.hpp"

#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/archive/NameEncoding.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "GNUstep/tools/archive/ZipReader.hpp"
#include "GNUstep/tools/tree/EntryPath.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <set>

namespace vant::media {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostItems = 500'000;
constexpr std::uint64_t alwaysAllowed = std::uint64_t{1} << 30;
constexpr std::uint64_t mostTimes = 100;

/// What is written down while an archive is gone through.
class Listing {
public:
    explicit Listing(std::uint64_t archiveBytes) : mostBytes_(std::max(alwaysAllowed, mostTimes * archiveBytes)) {}

    void add(const tools::Entry &entry) {
        if (++entries_ > mostItems)
            throw tools::ExpansionError("it holds more than " + std::to_string(mostItems) + " entries");
        if (outside_.empty() && !tools::safeEntryPath(entry.path))
            outside_ = entry.path;
        bytes_ += std::min(entry.size, mostBytes_);
        isTooLarge_ = bytes_ >= mostBytes_;
        if (isTooLarge_)
            throw tools::ExpansionError("it expands to more than " + std::to_string(mostBytes_) + " bytes");
        addPath(entry.path);
    }

    /// The fault, what was noted, then every item, each with a NUL behind it.
    [[nodiscard]] std::string text(const std::string &fault) const {
        std::string answer;
        for (const std::string &field : {fault, outside_, std::to_string(bytes_), std::string(isTooLarge_ ? "1" : "")})
            answer.append(field).push_back('\0');
        return answer + text_;
    }

private:
    void addPath(const std::string &entry) {
        const fs::path path = fs::path(entry).lexically_normal();
        const std::string name = path.filename();
        if (path.begin() == path.end() || *path.begin() == "__MACOSX" || name.starts_with("._"))
            return;
        fs::path whole;
        for (const fs::path &part : path) {
            if (part.empty() || part == ".")
                continue;
            whole /= part;
            if (seen_.insert(whole.string()).second)
                text_.append(whole.string()).push_back('\0');
        }
    }

    std::uint64_t mostBytes_;
    std::size_t entries_ = 0;
    std::uint64_t bytes_ = 0;
    bool isTooLarge_ = false;
    std::string outside_;
    std::set<std::string> seen_;
    std::string text_;
};

void listZip(const std::string &path, Listing &listing, const Alive &alive) {
    tools::ZipReader reader(path);
    for (tools::Entry entry; reader.next(entry); alive())
        listing.add(entry);
}

void listCpio(const std::string &path, Listing &listing, const Alive &alive) {
    tools::FileSource source(path);
    tools::PlainBytes plain(source);
    const auto reader = tools::ArchiveReader::cpio(plain.source());
    tools::DataBlock block;
    for (tools::Entry entry; reader->next(entry);) {
        listing.add(entry);
        // To reach the next entry, the data have to be decompressed anyway, which may take long.
        do
            alive();
        while (reader->nextBlock(block));
    }
}

std::string listArchive(const std::string &path, bool isZip, const Alive &alive) {
    // The child has the setting to itself.
    tools::useUTF8Names();
    std::error_code problem;
    Listing listing(fs::file_size(path, problem));
    std::string fault;
    try {
        (isZip ? listZip : listCpio)(path, listing, alive);
    } catch (const std::bad_alloc &) {
        throw;
    } catch (const std::exception &error) {
        fault = error.what();
    }
    return listing.text(fault);
}

/// The pieces of a text that each have a NUL behind them.
std::vector<std::string> pieces(const std::string &text) {
    std::vector<std::string> found;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\0', at);
        found.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return found;
}

ArchiveState stateOf(const std::string &answer) {
    const std::vector<std::string> fields = pieces(answer);
    ArchiveState state;
    state.fault = fields.at(0);
    state.outside = fields.at(1);
    state.bytes = std::strtoull(fields.at(2).c_str(), nullptr, 10);
    state.isTooLarge = !fields.at(3).empty();
    state.items.assign(fields.begin() + 4, fields.end());
    return state;
}

} // namespace

ArchiveState readArchive(const std::string &path, bool isZip) {
    const ApartResult result = runApart([&path, isZip](const Alive &alive) { return listArchive(path, isZip, alive); });
    if (result.fault.empty())
        return stateOf(result.answer);
    ArchiveState state;
    state.fault = result.fault;
    return state;
}

ArchiveState readArchiveHere(const std::string &path, bool isZip, const Alive &alive) {
    return stateOf(listArchive(path, isZip, alive));
}

} // namespace vant::media

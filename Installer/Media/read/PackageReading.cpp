#include "read/PackageReading.hpp"

#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/archive/NameEncoding.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "GNUstep/tools/package/Package.hpp"
#include "read/Apart.hpp"

#include <unistd.h>

#include <filesystem>
#include <new>
#include <optional>

namespace vant::media {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t mostBytes = std::uint64_t{16} << 30;
constexpr std::size_t mostItems = 500'000;

class Reading {
public:
    explicit Reading(const Alive &alive) : alive_(alive) {}

    /// Reads every entry of a payload or of scripts with all of its data.
    void through(tools::ByteSource &source) {
        tools::PlainBytes plain(source);
        const auto reader = tools::ArchiveReader::payload(plain.source());
        tools::Entry entry;
        while (reader->next(entry)) {
            if (++entries_ > mostItems)
                throw tools::ExpansionError("it holds more than " + std::to_string(mostItems) + " entries");
            tools::DataBlock block;
            while (reader->nextBlock(block))
                take(block.bytes.size());
            alive_();
        }
        plain.source().drain();
    }

private:
    void take(std::size_t bytes) {
        bytes_ += bytes;
        if (bytes_ > mostBytes)
            throw tools::ExpansionError("it holds more than " + std::to_string(mostBytes) + " bytes");
        alive_();
    }

    const Alive &alive_;
    std::uint64_t entries_ = 0;
    std::uint64_t bytes_ = 0;
};

std::string faultOfPackage(const std::string &path, const Alive &alive) {
    // The child has the setting to itself.
    tools::useUTF8Names();
    try {
        Reading reading(alive);
        tools::forEachPart(tools::openPackage(path),
                           [&](std::size_t, tools::Part, tools::ByteSource &source) { reading.through(source); });
        return "";
    } catch (const std::bad_alloc &) {
        throw;
    } catch (const std::exception &error) {
        return error.what();
    }
}

bool isSpecial(fs::file_type type) noexcept {
    using enum fs::file_type;
    return type == fifo || type == socket || type == block || type == character;
}

/// The first pipe, device or socket of a folder, through links too, since a reader would open it.
std::optional<std::string> specialFileIn(const fs::path &folder) {
    std::error_code problem;
    for (fs::recursive_directory_iterator item(folder, problem), end; !problem && item != end;
         item.increment(problem)) {
        std::error_code unreadable;
        if (isSpecial(item->status(unreadable).type()))
            return item->path().string();
    }
    return std::nullopt;
}

/// What can be told of a package without opening it.
PackageState stateOfFile(const std::string &path) {
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    if (status.type() == fs::file_type::not_found)
        return {PackageFault::Missing, {}};
    if (problem)
        return {PackageFault::NotReadable, problem.message()};
    if (isSpecial(status.type()))
        return {PackageFault::SpecialFile, path};
    if (access(path.c_str(), R_OK) != 0)
        return {PackageFault::NotReadable, "Permission denied"};
    if (fs::is_empty(path, problem))
        return {PackageFault::Empty, {}};
    if (!fs::is_directory(status))
        return {};
    const auto special = specialFileIn(path);
    return special ? PackageState{PackageFault::SpecialFile, *special} : PackageState{};
}

/// Whether the file or folder has the outer form of a package, so that what is wrong lies inside.
bool looksLikePackage(const std::string &path) {
    std::error_code problem;
    if (fs::is_directory(path, problem))
        return fs::exists(fs::path(path) / "Contents", problem);
    try {
        tools::FileSource source(path);
        return source.magic() == "xar!";
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace

PackageState readPackage(const std::string &path) {
    PackageState state = stateOfFile(path);
    if (state.fault != PackageFault::None)
        return state;
    const ApartResult result = runApart([&path](const Alive &alive) { return faultOfPackage(path, alive); });
    const std::string reason = result.fault.empty() ? result.answer : result.fault;
    if (reason.empty())
        return {};
    return {looksLikePackage(path) ? PackageFault::Damaged : PackageFault::NoPackage, reason};
}

} // namespace vant::media

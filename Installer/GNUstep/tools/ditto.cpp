// Expands an archive into a folder:  ditto -xk ARCHIVE.zip FOLDER   or   ditto -x ARCHIVE.cpio[.gz] FOLDER
#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "GNUstep/tools/archive/ZipReader.hpp"
#include "GNUstep/tools/process/ToolMain.hpp"
#include "GNUstep/tools/process/Worker.hpp"
#include "GNUstep/tools/tree/Expansion.hpp"
#include "GNUstep/tools/tree/Merge.hpp"
#include "GNUstep/tools/tree/Staging.hpp"

#include <cerrno>
#include <new>
#include <string>
#include <string_view>

namespace {

enum class Kind { Zip, Cpio };

struct Request {
    Kind kind = Kind::Cpio;
    std::string archive;
    std::string folder;
};

constexpr const char *usage = "usage: ditto -xk ARCHIVE FOLDER    expands a zip\n"
                              "       ditto -x ARCHIVE FOLDER     expands a cpio, compressed or not\n";
/// Nothing that group or others may write, whatever the archive says.
constexpr mode_t allowedModes = 0755;

std::optional<Request> parse(std::span<char *const> arguments) {
    Request request;
    std::string letters;
    while (!arguments.empty() && std::string_view(arguments.front()).starts_with('-')) {
        letters += std::string_view(arguments.front()).substr(1);
        arguments = arguments.subspan(1);
    }
    const bool known = letters.find_first_not_of("xk") == std::string::npos;
    const bool extract = letters.find('x') != std::string::npos;
    if (!known || !extract || arguments.size() != 2 || std::string_view(arguments[1]).empty())
        return std::nullopt;
    if (letters.find('k') != std::string::npos)
        request.kind = Kind::Zip;
    request.archive = arguments[0];
    request.folder = arguments[1];
    return request;
}

/// Expands everything into a new folder below the staging one and gives its path.
std::string stage(vant::tools::EntryReader &reader, const vant::tools::Staging &staging,
                  const vant::tools::Watchdog &watchdog) {
    staging.create();
    auto folder = staging.makeFolder("contents");
    vant::tools::Destination destination(folder, allowedModes);
    if (vant::tools::expand(reader, destination, {}, [&] { watchdog.progressed(); }).entries == 0)
        throw vant::tools::ExpansionError("the archive is empty");
    return folder;
}

std::string stageArchive(const Request &request, const vant::tools::Staging &staging,
                         const vant::tools::Watchdog &watchdog) {
    if (request.kind == Kind::Zip) {
        vant::tools::ZipReader reader(request.archive);
        return stage(reader, staging, watchdog);
    }
    vant::tools::FileSource file(request.archive);
    vant::tools::PlainBytes plain(file);
    const auto reader = vant::tools::ArchiveReader::cpio(plain.source());
    auto folder = stage(*reader, staging, watchdog);
    plain.source().drain();
    return folder;
}

void putInPlace(const std::string &folder, const vant::tools::Staging &staging) {
    const vant::tools::Uninterrupted now;
    if (staging.mergesInto())
        vant::tools::Merge(folder, staging.wanted(), vant::tools::Merge::Links::Refused).run();
    else if (std::rename(folder.c_str(), staging.wanted().c_str()) != 0)
        throw vant::tools::systemError(staging.wanted(), errno);
}

bool expandArchive(const Request &request, const vant::tools::Staging &staging, const vant::tools::Watchdog &watchdog) {
    try {
        putInPlace(stageArchive(request, staging, watchdog), staging);
        return true;
    } catch (const std::bad_alloc &) {
        throw;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "ditto: %s: %s\n", request.archive.c_str(), error.what());
        return false;
    }
}

int run(const Request &request) {
    const vant::tools::Staging staging(request.folder, ".ditto-");
    const auto end = vant::tools::inWorker(
        [&](const vant::tools::Watchdog &watchdog) { return expandArchive(request, staging, watchdog); });
    staging.remove();
    if (end == vant::tools::WorkEnd::Done)
        return 0;
    staging.removeMadeFolders();
    if (const std::string sentence(vant::tools::sentenceFor(end)); !sentence.empty())
        std::fprintf(stderr, "ditto: %s: %s.\n", request.archive.c_str(), sentence.c_str());
    return 1;
}

} // namespace

int main(int count, char **arguments) {
    return vant::tools::toolMain<Request>(count, arguments, usage, parse, run);
}

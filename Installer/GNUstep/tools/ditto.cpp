// Expands an archive into a folder:  ditto -xk ARCHIVE.zip FOLDER   or   ditto -x ARCHIVE.cpio[.gz] FOLDER
#include "Expansion.hpp"
#include "ExpansionError.hpp"
#include "GunzipSource.hpp"
#include "Staging.hpp"
#include "Watchdog.hpp"

#include <sys/stat.h>

#include <clocale>
#include <cstdio>
#include <optional>
#include <span>
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
constexpr const char *circleWords = "ditto: the archive is damaged: reading it does not come to an end\n";
constexpr int watchSeconds = 5;

std::optional<Request> requestFrom(std::span<char *const> arguments) {
    Request request;
    bool extract = false;
    while (!arguments.empty() && std::string_view(arguments.front()).starts_with('-')) {
        for (const char letter : std::string_view(arguments.front()).substr(1)) {
            if (letter != 'x' && letter != 'k')
                return std::nullopt;
            extract = extract || letter == 'x';
            request.kind = letter == 'k' ? Kind::Zip : request.kind;
        }
        arguments = arguments.subspan(1);
    }
    if (!extract || arguments.size() != 2 || std::string_view(arguments[1]).empty())
        return std::nullopt;
    request.archive = arguments[0];
    request.folder = arguments[1];
    return request;
}

void expandInto(vant::ArchiveReader &reader, const std::string &folder, const vant::Watchdog &watchdog) {
    vant::Destination destination(folder);
    if (vant::expand(reader, destination, {}, [&] { watchdog.fed(); }).entries == 0)
        throw vant::ExpansionError("the archive is empty");
}

void run(const Request &request, const vant::Watchdog &watchdog) {
    if (request.kind == Kind::Zip) {
        auto reader = vant::ArchiveReader::zip(request.archive);
        vant::Staging staging(request.folder);
        expandInto(reader, staging.folder(), watchdog);
        return staging.commit();
    }
    vant::FileSource file(request.archive);
    std::unique_ptr<vant::GunzipSource> gunzip;
    auto &source = vant::decompressed(file, gunzip);
    auto reader = vant::ArchiveReader::cpio(source);
    vant::Staging staging(request.folder);
    expandInto(reader, staging.folder(), watchdog);
    source.drain();
    staging.commit();
}

} // namespace

int main(int count, char **arguments) {
    const auto request = requestFrom(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
    if (!request) {
        std::fputs(usage, stderr);
        return 1;
    }
    // Names in archives are UTF-8 whatever the language; modes are the archive's own.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ::umask(0);
    try {
        const vant::Watchdog watchdog(watchSeconds, circleWords);
        run(*request, watchdog);
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "ditto: %s: %s\n", request->archive.c_str(), error.what());
        return 1;
    }
}

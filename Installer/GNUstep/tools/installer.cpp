// Installs a package into the folder that stands for the volume:  installer [-verboseR] -pkg PATH -target /
#include "Expansion.hpp"
#include "ExpansionError.hpp"
#include "GunzipSource.hpp"
#include "InstallReport.hpp"
#include "Package.hpp"
#include "Watchdog.hpp"

#include <sys/stat.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

namespace {

using vant::InstallReport;

struct Request {
    std::string package;
    std::string target;
    InstallReport::Detail detail = InstallReport::Detail::Outcome;
};

constexpr const char *usage = "usage: installer [-verbose | -verboseR] -pkg PATH -target /\n";
constexpr const char *circleWords = "installer: the package is damaged: reading it does not come to an end\n";
constexpr const char *circleLine =
    "installer: The install failed (The package is damaged: reading it does not come to an end.)\n";
constexpr int watchSeconds = 5;

std::optional<Request> requestFrom(std::span<char *const> arguments) {
    Request request;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view option = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (option == "-verboseR")
            request.detail = InstallReport::Detail::Progress;
        else if ((option == "-pkg" || option == "-package") && hasValue)
            request.package = arguments[++i];
        else if ((option == "-target" || option == "-tgt") && hasValue)
            request.target = arguments[++i];
        else if (option != "-verbose")
            return std::nullopt;
    }
    if (request.package.empty() || request.target.empty())
        return std::nullopt;
    return request;
}

/// The folder that stands for "/", or nothing when none is named: the machine's own root is never written to.
std::optional<std::filesystem::path> volume() {
    const char *root = std::getenv("VANT_INSTALL_ROOT");
    if (root == nullptr || *root == '\0')
        return std::nullopt;
    std::error_code problem;
    const auto folder = std::filesystem::weakly_canonical(root, problem);
    if (problem || folder == "/")
        return std::nullopt;
    return folder;
}

/// The folder of the volume that a component goes to.
vant::EntryPath placeOf(const vant::Component &component) {
    const auto inside = std::filesystem::path(component.installLocation).relative_path();
    const auto place = vant::safeEntryPath(inside.empty() ? "." : inside.string());
    if (!place)
        throw vant::ExpansionError("The package wants to be installed outside of the volume.");
    return *place;
}

class Installation {
public:
    Installation(const vant::Package &package, InstallReport &report, const vant::Watchdog &watchdog)
        : package_(package), report_(report), watchdog_(watchdog) {}

    void into(const std::filesystem::path &root) {
        progress(0);
        for (const auto &component : package_.components) {
            if (!component.payload.empty())
                unpack(component, root);
            finished_ += component.size;
            progress(0);
        }
    }

private:
    void unpack(const vant::Component &component, const std::filesystem::path &root) {
        vant::withPayload(package_, component, [&](vant::ByteSource &source) {
            if (source.magic() == "pbzx")
                throw vant::ExpansionError("The package's payload is compressed as pbzx, which cannot be read here.");
            std::unique_ptr<vant::GunzipSource> gunzip;
            auto &plain = vant::decompressed(source, gunzip);
            auto reader = vant::ArchiveReader::payload(plain);
            vant::Destination destination(root, placeOf(component));
            vant::expand(reader, destination, limits_, [&] { progress(source.taken()); });
            plain.drain();
        });
    }

    void progress(std::uint64_t taken) {
        watchdog_.fed();
        const auto all = package_.size();
        report_.unpacked(all == 0 ? 1 : static_cast<double>(finished_ + taken) / static_cast<double>(all));
    }

    const vant::Package &package_;
    InstallReport &report_;
    const vant::Watchdog &watchdog_;
    const vant::Limits limits_;
    std::uint64_t finished_ = 0;
};

int refuse(const std::string &message, const std::string &detail) {
    std::fprintf(stderr, "installer: %s\ninstaller: %s\n", message.c_str(), detail.c_str());
    return 1;
}

int install(const Request &request, const vant::Package &package, const vant::Watchdog &watchdog) {
    const auto root = volume();
    if (!root)
        return refuse("Cannot install on volume / because it is disabled.",
                      "VANT_INSTALL_ROOT names no folder that could stand for it.");
    InstallReport report(request.detail);
    report.begin(package.title);
    try {
        Installation(package, report, watchdog).into(*root);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "installer: %s: %s\n", request.package.c_str(), error.what());
        report.fail(error.what());
        return 1;
    }
    report.succeed();
    return 0;
}

int run(const Request &request) {
    const vant::Watchdog watchdog(watchSeconds, circleWords, circleLine);
    std::optional<vant::Package> package;
    try {
        package = vant::openPackage(request.package);
    } catch (const std::exception &error) {
        return refuse("Error - the package path specified was invalid: '" + request.package + "'.", error.what());
    }
    if (request.target != "/")
        return refuse("Error - the target specified was invalid: '" + request.target + "'.",
                      "The only volume here is \"/\".");
    return install(request, *package, watchdog);
}

} // namespace

int main(int count, char **arguments) {
    const auto request = requestFrom(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
    if (!request) {
        std::fputs(usage, stderr);
        return 1;
    }
    // A reader that closes its end must not leave a package half installed.
    std::signal(SIGPIPE, SIG_IGN);
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ::umask(0);
    return run(*request);
}

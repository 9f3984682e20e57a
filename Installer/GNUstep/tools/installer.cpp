// Installs a package into the folder that stands for the volume:  installer [-verboseR] -pkg PATH -target /
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/package/Installation.hpp"
#include "GNUstep/tools/process/ToolMain.hpp"
#include "GNUstep/tools/process/Worker.hpp"

#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

namespace {

using vant::tools::InstallReport;

struct Request {
    std::string package;
    std::string target;
    InstallReport::Detail detail = InstallReport::Detail::Outcome;
};

constexpr const char *usage = "usage: installer [-verbose | -verboseR] -pkg PATH -target /\n";

std::optional<Request> parse(std::span<char *const> arguments) {
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

bool refuse(const std::string &message, const std::string &detail) {
    std::fprintf(stderr, "installer: %s\ninstaller: %s\n", message.c_str(), detail.c_str());
    return false;
}

bool install(const Request &request, const vant::tools::Package &package, const vant::tools::Staging &staging,
             const vant::tools::Watchdog &watchdog) {
    InstallReport report(request.detail);
    report.begin(package.title);
    try {
        vant::tools::Installation(package, staging, report, watchdog).run();
    } catch (const std::bad_alloc &) {
        throw;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "installer: %s: %s\n", request.package.c_str(), error.what());
        report.fail(error.what());
        return false;
    }
    report.succeed();
    return true;
}

bool openAndInstall(const Request &request, const std::optional<vant::tools::Staging> &staging,
                    const vant::tools::Watchdog &watchdog) {
    vant::tools::Package package;
    try {
        package = vant::tools::openPackage(request.package);
    } catch (const std::bad_alloc &) {
        throw;
    } catch (const std::exception &error) {
        return refuse("Error - the package path specified was invalid: '" + request.package + "'.", error.what());
    }
    if (request.target != "/")
        return refuse("Error - the target specified was invalid: '" + request.target + "'.",
                      "The only volume here is \"/\".");
    if (!staging)
        return refuse("Cannot install on volume / because it is disabled.",
                      "VANT_INSTALL_ROOT names no folder that could stand for it.");
    return install(request, package, *staging, watchdog);
}

int run(const Request &request) {
    std::optional<vant::tools::Staging> staging;
    if (const auto root = volume())
        staging.emplace(*root, ".installer-", vant::tools::Staging::Place::Inside);
    const auto end = vant::tools::inWorker(
        [&](const vant::tools::Watchdog &watchdog) { return openAndInstall(request, staging, watchdog); });
    if (staging)
        staging->remove();
    if (end == vant::tools::WorkEnd::Done)
        return 0;
    if (staging)
        staging->removeMadeFolders();
    if (const std::string sentence(vant::tools::sentenceFor(end)); !sentence.empty()) {
        std::fprintf(stderr, "installer: %s: %s.\n", request.package.c_str(), sentence.c_str());
        InstallReport(request.detail).fail(sentence + ".");
    }
    return 1;
}

} // namespace

int main(int count, char **arguments) {
    return vant::tools::toolMain<Request>(count, arguments, usage, parse, run);
}

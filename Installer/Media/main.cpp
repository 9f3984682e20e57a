// vantmedia: what the pane would do with a media folder, and what is wrong with it.
#include "check/Checks.hpp"
#include "report/Json.hpp"
#include "report/Options.hpp"
#include "report/Text.hpp"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using namespace vant::media;

constexpr int usageStatus = 2;

void print(const std::string &text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    // At once, or a child process would have it to print, too.
    std::fflush(stdout);
}

/// One line on a terminal that says how far a long check is; nothing elsewhere.
class Progress {
public:
    explicit Progress(std::size_t packages) : packages_(packages), isShown_(isatty(STDERR_FILENO) != 0) {}
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    ~Progress() {
        if (isShown_)
            std::fputs("\r\x1b[K", stderr);
    }

    PackageState read(const std::string &path) {
        ++done_;
        if (isShown_)
            std::fprintf(stderr, "\r\x1b[KReading package %zu of %zu", done_, packages_);
        return readPackage(path);
    }

private:
    std::size_t packages_;
    std::size_t done_ = 0;
    bool isShown_;
};

fs::path programFolder() {
    std::error_code problem;
    return fs::read_symlink("/proc/self/exe", problem).parent_path();
}

ExpansionState expanded(const std::string &archive, const Download &download) {
    const std::string tool = programFolder() / "tools" / "ditto";
    return readExpanded(tool, archive, download.archive == vant::ArchiveKind::Zip, download.packages);
}

Findings findingsOf(const Survey &found, const Plan &plan) {
    Progress progress(plan.packages.size());
    return check(
        found, plan,
        {.package = [&progress](const std::string &path) { return progress.read(path); }, .archive = expanded});
}

Report missingMedia(const std::string &media) {
    Report report;
    report.media = media;
    report.findings = {{Severity::Error, "media-missing", media, "there is no such folder"}};
    return report;
}

Report look(const Options &options, const std::string &media) {
    std::error_code problem;
    if (!fs::is_directory(media, problem))
        return missingMedia(media);
    Request request = options.request;
    request.media = media;
    const Survey found = survey(request);
    const Plan plan = makePlan(found.input);
    Report report = describe(found, plan, request.tables, options.language);
    if (options.command == Options::Command::Check)
        report.findings = findingsOf(found, plan);
    return report;
}

bool isColourWanted() {
    const char *refused = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0');
}

void printText(const Options &options, const Report &report) {
    if (options.command == Options::Command::Plan && report.findings.empty())
        print(planText(report));
    else
        print(findingsText(report, isColourWanted()));
}

int run(Options options) {
    if (options.command == Options::Command::Help) {
        print(helpText());
        return 0;
    }
    if (options.command == Options::Command::Version) {
        print("vantmedia " VANT_VERSION "\n");
        return 0;
    }
    if (options.request.tables.empty())
        options.request.tables = programFolder() / "VantInstallation.bundle" / "Resources";
    std::vector<Report> reports;
    std::vector<Findings> findings;
    for (const std::string &media : options.media) {
        reports.push_back(look(options, media));
        findings.push_back(reports.back().findings);
        if (!options.isJson)
            printText(options, reports.back());
    }
    if (options.isJson)
        print(json(reports, VANT_VERSION));
    return exitStatus(findings, options.isStrict);
}

} // namespace

int main(int count, char **arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        return run(optionsOf(words));
    } catch (const std::invalid_argument &error) {
        std::fprintf(stderr, "vantmedia: %s\nTry vantmedia --help.\n", error.what());
        return usageStatus;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "vantmedia: %s\n", error.what());
        return 1;
    }
}

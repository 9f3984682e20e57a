// vantmedia: what the pane would do with a media folder, and what is wrong with it.
#include "Look.hpp"
#include "platform/Places.hpp"
#include "read/TemporaryFolder.hpp"
#include "report/Json.hpp"
#include "report/Options.hpp"
#include "report/Text.hpp"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

using namespace vant::media;

constexpr int usageStatus = 2;

void print(const std::string &text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    // At once, or a child process would have it to print, too.
    std::fflush(stdout);
}

bool isColourWanted() {
    const char *refused = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0');
}

void printText(const Options &options, const Report &report) {
    if (options.command == Options::Command::Plan && report.findings.empty())
        print(planText(report));
    else if (report.site)
        print(siteText(report) + findingsText(report, isColourWanted()));
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
        options.request.tables = tablesBeside(programFolder());
    removeAbandonedFolders();
    std::vector<Report> reports;
    std::vector<Findings> findings;
    if (options.media.empty())
        options.media = {""};
    for (const std::string &media : options.media) {
        reports.push_back(look(options, media, toolsFor(programFolder())));
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

#include "Look.hpp"

#include "check/Checks.hpp"
#include "Locations.hpp"
#include "plan/Contents.hpp"
#include "read/Interruption.hpp"
#include "read/TemporaryFolder.hpp"
#include "report/ProgressLine.hpp"

#include <filesystem>
#include <stdexcept>

namespace vant::media {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t megabyte = 1'000'000;

Report missingMedia(const std::string &media) {
    Report report;
    report.media = media;
    report.findings = {{Severity::Error, "media-missing", media, "there is no such folder"}};
    return report;
}

/// Nothing that lies there already is overwritten, or taken for something fetched.
std::string folderToKeep(const std::string &path) {
    std::error_code problem;
    fs::create_directories(path, problem);
    if (!fs::is_directory(path, problem) || !fs::is_empty(path, problem) || problem)
        throw std::runtime_error(path + " is no empty folder, nor can it be made");
    return fs::absolute(path);
}

Findings findingsOf(const Survey &found, const Plan &plan, const Site *site, const std::string &tool) {
    ProgressLine line;
    std::size_t done = 0;
    const auto package = [&](const std::string &path) {
        line.show("Reading package " + std::to_string(++done) + " of " + std::to_string(plan.packages.size()));
        return readPackage(path);
    };
    const auto archive = [&tool](const std::string &path, const Download &download) {
        return readExpanded(tool, path, download.archive == ArchiveKind::Zip, packagesAmong);
    };
    return check(found, plan, site, {.package = package, .archive = archive});
}

/// Surveys the media and the site in one; the site's answers lie in the folder.
Survey visited(Site &site, Request request, const Options &options, const std::string &folder,
               const std::string &tool) {
    ProgressLine line;
    const Visit visit{.folder = folder,
                      .tool = tool,
                      .limits = options.limits,
                      .fetching =
                          [&line](std::size_t done, std::uint64_t bytes) {
                              line.show("Fetching: " + std::to_string(done) + " done, " +
                                        std::to_string(bytes / megabyte) + " MB");
                          },
                      .reading = [&line](const std::string &address) { line.show("Reading " + address); }};
    site.address = request.site;
    const bool isNamed = request.webSelection.has_value();
    if (!isNamed)
        request.webSelection = fetchSelection(site, visit);
    Survey found = survey(request);
    if (!isNamed)
        found.web->file.path = host::absoluteLocation(siteSelection, site.address);
    visitArchives(site, found, visit);
    return found;
}

Report lookAtSite(const Options &options, const Request &request, const std::string &tool) {
    noteInterruptions();
    const TemporaryFolder temporary;
    Site site;
    const std::string folder = options.keep ? folderToKeep(*options.keep) : temporary.path();
    const Survey found = visited(site, request, options, folder, tool);
    const Plan plan = makePlan(found.input);
    Report report = describe(found, plan, request.tables, options.language);
    if (request.media.empty())
        report.media = site.address;
    report.findings = findingsOf(found, plan, &site, tool);
    report.site = std::move(site);
    return report;
}

} // namespace

Report look(const Options &options, const std::string &media, const std::string &tools) {
    std::error_code problem;
    if (!media.empty() && !fs::is_directory(media, problem))
        return missingMedia(media);
    Request request = options.request;
    request.media = media;
    const std::string tool = tools + "/ditto";
    if (request.isSiteVisited)
        return lookAtSite(options, request, tool);
    const Survey found = survey(request);
    const Plan plan = makePlan(found.input);
    Report report = describe(found, plan, request.tables, options.language);
    if (options.command == Options::Command::Check)
        report.findings = findingsOf(found, plan, nullptr, tool);
    return report;
}

} // namespace vant::media

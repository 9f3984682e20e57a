#include "check/Checks.hpp"
#include "FuzzJail.hpp"
#include "plan/Contents.hpp"
#include "read/ArchiveListing.hpp"
#include "read/Lists.hpp"
#include "report/Json.hpp"
#include "report/Text.hpp"

#include <algorithm>

namespace {

using namespace vant::media;
using vant::fuzz::require;

bool leadsOut(const std::string &item) {
    return item.starts_with('/') || item == ".." || item.starts_with("../") || item.find("/../") != std::string::npos;
}

/// Whatever the report holds, both of its forms come to an end, and neither moves a terminal.
void tell(const Report &report) {
    require(json(std::vector{report}, "1").ends_with("}\n"));
    const std::string text = planText(report) + findingsText(report, false);
    require(std::ranges::none_of(text, [](char c) { return c == '\x1b' || c == '\x7f' || c == '\0'; }));
}

/// The plan of a site whose one archive this is, and what is found in it.
void planFor(const ArchiveState &state) {
    PlanInput input;
    input.smartUpdate = true;
    input.web = {{"http://site/a.zip", "Print Driver", state.items}};
    Report report;
    report.plan = makePlan(input);
    require(report.plan.downloads.at(0).packages == packagesAmong(state.items));
    SiteArchive archive{.fetched = {}, .isFetched = true, .file = "a.zip", .listed = state, .content = {}};
    archive.content.items = state.items;
    checkSiteContent(archive, report.plan, report.plan.downloads.at(0), report.findings);
    require(state.fault.empty() || !report.findings.empty());
    tell(report);
}

void readAsArchive(const std::string &path, bool isZip) {
    const ArchiveState state = readArchiveHere(path, isZip, [] {});
    if (state.outside.empty())
        require(std::ranges::none_of(state.items, leadsOut));
    require(!state.isTooLarge || !state.fault.empty());
    planFor(state);
}

void readAsList(const std::string &path) {
    Report report;
    const SelectionFile selection = readSelection(path);
    checkSelection(selection, vant::Flow::Media, report.findings);
    require(selection.components.size() == selection.file.root.elements.size());
    require(selection.file.fault == ListFault::None || !report.findings.empty());
    static_cast<void>(readSettings(path));
    tell(report);
}

} // namespace

// Any bytes are an archive of either form and a list, or are said to be none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const vant::fuzz::FuzzJail jail;
    const std::string path = jail.input(data, size);
    readAsArchive(path, true);
    readAsArchive(path, false);
    readAsList(path);
    static_cast<void>(contentName(contentKindOfFile(path)));
    return 0;
}

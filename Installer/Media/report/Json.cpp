#include "report/Json.hpp"

#include "plan/Collisions.hpp"
#include "plan/Contents.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vant::media {
namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::optional<std::string> &text) {
    return text ? Json(*text) : Json(nullptr);
}

Json packageJson(const PlannedPackage &package) {
    return {{"name", packageName(package)},
            {"component", textOrNull(package.component)},
            {"path", textOrNull(package.path)},
            {"origin", originName(package.origin)},
            {"archive", package.archive.empty() ? Json(nullptr) : Json(package.archive)}};
}

Json lineJson(const PackageLine &line) {
    Json package = packageJson(line.package);
    package["status"] = line.status;
    package["profiles"] = line.bringsProfiles;
    return package;
}

Json droppedJson(const DroppedPackage &dropped) {
    Json package = packageJson(dropped.package);
    package["rule"] = dropRuleName(dropped.rule);
    return package;
}

Json downloadJson(const Download &download) {
    return {{"address", textOrNull(download.address)},
            {"file", download.file},
            {"folder", download.folder},
            {"archive", download.archive == ArchiveKind::Zip ? "zip" : "cpio"},
            {"contentKnown", download.isContentKnown},
            {"setAside", download.setAside}};
}

Json collisionJson(const Collision &collision) {
    return {{"kind", collisionName(collision.kind)}, {"name", collision.name}, {"count", collision.count}};
}

Json slideJson(const SlideLine &slide) {
    return {{"language", slide.language}, {"image", slide.image},         {"title", slide.title},
            {"message", slide.message},   {"titleText", slide.titleText}, {"messageText", slide.messageText}};
}

Json findingJson(const Finding &finding) {
    return {{"severity", severityName(finding.severity)},
            {"code", finding.code},
            {"subject", finding.subject},
            {"message", finding.message}};
}

template<class Range, class Literal>
Json listJson(const Range &range, Literal literal) {
    Json list = Json::array();
    for (const auto &element : range)
        list.push_back(literal(element));
    return list;
}

Json contentJson(const Content &content) {
    return {{"item", content.item},
            {"outcome", outcomeName(content.outcome)},
            {"reason", content.reason},
            {"inside", content.inside.empty() ? Json(nullptr) : Json(content.inside)}};
}

Json archiveJson(const SiteArchive &archive, const Plan &plan, const Download &download) {
    const Fetched &fetched = archive.fetched;
    return {{"address", textOrNull(download.address)},
            {"redirects", fetched.redirects},
            {"status", fetched.status},
            {"type", fetched.mediaType},
            {"announced", fetched.announced < 0 ? Json(nullptr) : Json(fetched.announced)},
            {"received", fetched.received},
            {"expanded", archive.listed.bytes},
            {"contents", listJson(contentsOf(archive.content.items, plan, download.file), contentJson)}};
}

Json siteJson(const std::optional<Site> &site, const Plan &plan) {
    if (!site)
        return nullptr;
    Json archives = Json::array();
    for (std::size_t i = 0; i < plan.downloads.size(); ++i)
        archives.push_back(archiveJson(site->archives[i], plan, plan.downloads[i]));
    return {{"address", site->address}, {"archives", archives}};
}

Json reportJson(const Report &report) {
    return {
        {"path", report.media},
        {"view", report.plan.view == Flow::Web ? "web" : "media"},
        {"rows", report.plan.rows},
        {"packages", listJson(report.packages, lineJson)},
        {"dropped", listJson(report.plan.dropped, droppedJson)},
        {"downloads", listJson(report.plan.downloads, downloadJson)},
        {"collisions", listJson(collisionsOf(report.plan), collisionJson)},
        {"endsWithSetAside", report.plan.endsWithSetAside},
        {"profiles",
         {{"folder", report.profiles.folder}, {"archive", report.profiles.archive}, {"files", report.profiles.files}}},
        {"slides", listJson(report.slides, slideJson)},
        {"site", siteJson(report.site, report.plan)},
        {"findings", listJson(report.findings, findingJson)}};
}

} // namespace

std::string json(std::span<const Report> reports, const std::string &programVersion) {
    const Json document = {
        {"version", jsonVersion}, {"program", programVersion}, {"media", listJson(reports, reportJson)}};
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace vant::media

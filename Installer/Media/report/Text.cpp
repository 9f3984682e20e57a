#include "report/Text.hpp"

#include "plan/Collisions.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vant::media {
namespace {

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string counted(std::size_t count, const std::string &word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::string nameOf(const PlannedPackage &package) {
    const std::string name = packageName(package);
    return name.empty() ? "(without a path)" : printable(name);
}

std::string packageText(const PackageLine &line, std::size_t number) {
    const PlannedPackage &package = line.package;
    std::string text = padded(std::to_string(number), 4) + padded(nameOf(package), 24) + " " +
                       padded(printable(package.component.value_or("(no kind)")), 30) +
                       std::string(originName(package.origin));
    if (!package.archive.empty())
        text += " (" + printable(package.archive) + ")";
    if (line.bringsProfiles)
        text += ", brings colour profiles";
    text += "\n      " + printable(package.path.value_or("")) + "\n";
    return line.status.empty() ? text : text + "      \"" + printable(line.status) + "\"\n";
}

std::string downloadText(const Download &download) {
    std::string text = "  " + printable(download.address.value_or("(no address)")) + "\n      → " +
                       printable(download.file) + " → " + printable(download.folder) + "/" +
                       (download.isContentKnown ? "" : "  (content not known)") + "\n";
    for (const std::string &item : download.setAside)
        text += "      set aside because of " + printable(item) + "\n";
    return text;
}

std::string slidesText(const Report &report) {
    std::string text = "Slides: image, text\n";
    for (const SlideLine &slide : report.slides)
        text += "  " + slide.language + "  " + padded(slide.image, 12) + padded(slide.title, 12) +
                printable(slide.titleText) + "\n";
    return text;
}

std::string profilesText(const ProfileLine &profiles) {
    if (profiles.folder.empty())
        return "";
    std::string text = "Colour profiles from " + printable(profiles.folder) + "\n";
    for (const std::string &file : profiles.files)
        text += "  " + printable(file) + "\n";
    if (!profiles.archive.empty())
        text += "  (some of them from " + printable(profiles.archive) + ")\n";
    return text;
}

std::string coloured(Severity severity, bool isColoured) {
    std::string name(severityName(severity));
    if (!isColoured)
        return name;
    const char *colour = severity == Severity::Error ? "31" : severity == Severity::Warning ? "33" : "36";
    return "\x1b[" + std::string(colour) + "m" + name + "\x1b[0m";
}

std::size_t countOf(const Findings &findings, Severity severity) {
    return static_cast<std::size_t>(std::ranges::count(findings, severity, &Finding::severity));
}

} // namespace

std::string printable(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        std::array<char, 5> code{};
        std::snprintf(code.data(), code.size(), "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        shown += isControl ? std::string(code.data()) : std::string(1, c);
    }
    return shown;
}

std::string planText(const Report &report) {
    const Plan &plan = report.plan;
    std::string text = std::string(plan.view == Flow::Web ? "Web" : "Media") + " view, " + counted(plan.rows, "row") +
                       ", " + counted(plan.packages.size(), "package") + "\n";
    if (!plan.downloads.empty())
        text += "Downloads\n";
    for (const Download &download : plan.downloads)
        text += downloadText(download);
    if (plan.endsWithSetAside)
        text += "The last archive is set aside: its folder is shown, and nothing is installed\n";
    for (std::size_t i = 0; i < report.packages.size(); ++i)
        text += packageText(report.packages[i], i + 1);
    if (!plan.dropped.empty())
        text += "Dropped\n";
    for (const DroppedPackage &dropped : plan.dropped)
        text += "  " + padded(nameOf(dropped.package), 26) + std::string(dropRuleName(dropped.rule)) + "\n";
    for (const Collision &collision : collisionsOf(plan))
        text += "Collision: " + std::to_string(collision.count) + " share the " +
                std::string(collisionName(collision.kind)) + " \"" + printable(collision.name) + "\"\n";
    return text + profilesText(report.profiles) + slidesText(report);
}

std::string findingsText(const Report &report, bool isColoured) {
    std::string text;
    for (const Finding &finding : report.findings)
        text += coloured(finding.severity, isColoured) + ": " + printable(finding.subject) +
                (finding.subject.empty() ? "" : ": ") + printable(finding.message) + " [" + finding.code + "]\n";
    return text + printable(report.media) + ": " + counted(countOf(report.findings, Severity::Error), "error") + ", " +
           counted(countOf(report.findings, Severity::Warning), "warning") + ", " +
           counted(countOf(report.findings, Severity::Note), "note") + "\n";
}

} // namespace vant::media

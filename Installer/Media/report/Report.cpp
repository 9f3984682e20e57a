#include "report/Report.hpp"

#include "base/Languages.hpp"
#include "base/Paths.hpp"
#include "install/profiles/ColourProfiles.hpp"
#include "install/status/ComponentName.hpp"
#include "install/status/InstallingText.hpp"
#include "read/ArchiveListing.hpp"
#include "slides/SlideText.hpp"

#include <algorithm>
#include <map>
#include <utility>

namespace vant::media {
namespace {

/// The plug-in's words in one language.
class Words {
public:
    Words(const std::string &tables, const std::string &code) : code_(code) {
        const Language *language = languageOfCode(code);
        if (language != nullptr)
            table_ = tables + "/" + std::string(language->folder) + ".lproj/Localizable-Inst.strings";
    }

    /// What the window says of a component. Each lookup reads a table from disk, and there are few components.
    const std::string &status(Flow flow, const std::string &component) {
        const auto [known, isNew] = statuses_.try_emplace({flow, component});
        if (isNew)
            known->second = lookUp(flow, component);
        return known->second;
    }

private:
    [[nodiscard]] std::string lookUp(Flow flow, const std::string &component) const {
        const auto word = tableString(table_, "Installing");
        return word ? installingText(code_, *word, shownName(flow, component)).text : std::string();
    }

    [[nodiscard]] std::string shownName(Flow flow, const std::string &component) const {
        const DisplayName name = displayName(flow, component);
        if (name.source == DisplayName::Source::Itself)
            return component;
        const std::string text(name.text);
        return name.source == DisplayName::Source::Text ? text : tableString(table_, text).value_or(component);
    }

    std::string code_;
    std::string table_;
    std::map<std::pair<Flow, std::string>, std::string> statuses_;
};

std::string sourceOf(bool inMain, bool inFallBack) {
    if (inMain)
        return "GTA";
    return inFallBack ? "GTA_Default" : "built in";
}

std::string element(const LanguageSlides &slides, const char *opening, const char *closing) {
    const auto &text = slides.main.text ? slides.main.text : slides.fallBack.text;
    return text ? std::string(textBetween(*text, opening, closing)) : std::string();
}

SlideLine slideLine(const LanguageSlides &slides) {
    const std::string text = sourceOf(slides.main.text.has_value(), slides.fallBack.text.has_value());
    return {.language = slides.code,
            .image = sourceOf(slides.main.hasImage, slides.fallBack.hasImage),
            .title = text,
            .message = text,
            .titleText = element(slides, "<TITLE>", "</TITLE>"),
            .messageText = element(slides, "<MESSAGE>", "</MESSAGE>")};
}

ProfileLine profileLine(const ProfileSource &source) {
    ProfileLine line{.folder = source.folder, .archive = {}, .files = source.profiles};
    if (source.archives.empty())
        return line;
    line.archive = source.archives.back();
    for (const std::string &item : readArchive(source.folder + line.archive, true).items)
        if (profileFileOfExtension(pathExtension(item)) == ProfileFile::Profile)
            line.files.emplace_back(lastPathComponent(item));
    return line;
}

} // namespace

Report describe(const Survey &found, const Plan &plan, const std::string &tables, const std::string &language) {
    Report report{
        .media = found.media, .plan = plan, .packages = {}, .profiles = {}, .slides = {}, .findings = {}, .site = {}};
    Words words(tables, language);
    bool anyProfiles = false;
    for (const PlannedPackage &package : plan.packages) {
        const bool brings = needsColourProfiles(packageName(package));
        report.packages.push_back({package, words.status(plan.view, package.component.value_or("")), brings});
        anyProfiles = anyProfiles || brings;
    }
    if (anyProfiles)
        report.profiles = profileLine(found.profiles);
    for (const LanguageSlides &slides : found.slides)
        report.slides.push_back(slideLine(slides));
    return report;
}

} // namespace vant::media

#include "base/Languages.hpp"
#include "check/Checks.hpp"
#include "slides/SlideText.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace vant::media {
namespace {

bool hasElement(const std::string &text, const std::string &name) {
    const auto opening = text.find("<" + name + ">");
    return opening != std::string::npos && text.find("</" + name + ">", opening) != std::string::npos;
}

bool isPicture(const std::string &path) {
    std::error_code problem;
    if (!std::filesystem::is_regular_file(path, problem))
        return false;
    std::array<char, 8> bytes{};
    std::ifstream(path, std::ios::binary).read(bytes.data(), bytes.size());
    const std::string_view start(bytes.data(), bytes.size());
    // The platform looks at the content: any picture does, whatever the name says.
    return start == "\x89PNG\r\n\x1a\n" || start.starts_with("\xFF\xD8\xFF") || start.starts_with("GIF8") ||
           start.starts_with("II*") || start.starts_with("MM");
}

void checkElement(const std::string &text, const std::string &name, const std::string &subject, Findings &findings) {
    if (!hasElement(text, name)) {
        findings.push_back({Severity::Warning, "slide-text-element", subject,
                            "the text has no <" + name + "> element; whatever stands there is shown, tags included"});
        return;
    }
    const std::string shown(textBetween(text, "<" + name + ">", "</" + name + ">"));
    if (shown.find('&') != std::string::npos && shown.find(';', shown.find('&')) != std::string::npos)
        findings.push_back({Severity::Warning, "slide-entity", subject,
                            "<" + name + "> holds an entity, which is shown as it is written"});
    if (shown.find('<') != std::string::npos)
        findings.push_back(
            {Severity::Warning, "slide-tag", subject, "<" + name + "> holds a tag, which is shown as it is written"});
}

void checkText(const SlideSet &set, Findings &findings) {
    const std::string file = set.folder + "/string.xml";
    if (!set.hasTextFile)
        findings.push_back({Severity::Warning, "slide-text-missing", file, "the slide has no text of its own"});
    else if (!set.text)
        findings.push_back({Severity::Warning, "slide-text-unreadable", file, "the file cannot be read as text"});
    if (!set.text)
        return;
    checkElement(*set.text, "TITLE", file, findings);
    checkElement(*set.text, "MESSAGE", file, findings);
}

void checkSet(const SlideSet &set, Findings &findings) {
    const std::string image = set.folder + "/image.png";
    if (!set.hasImage)
        findings.push_back({Severity::Warning, "slide-image-missing", image, "the slide has no image of its own"});
    else if (!isPicture(image))
        findings.push_back({Severity::Warning, "slide-image-unreadable", image,
                            "the file is no picture, and the place of the slide's image stays empty"});
    checkText(set, findings);
}

} // namespace

void checkSlides(const Survey &found, Findings &findings) {
    const bool anySlides = std::ranges::any_of(
        found.slides, [](const LanguageSlides &slides) { return slides.main.isThere || slides.fallBack.isThere; });
    for (const std::string &path : found.strayLanguages)
        findings.push_back({Severity::Warning, "slide-language", path,
                            "no language has this code, so that the slides are never shown"});
    for (const LanguageSlides &slides : found.slides) {
        if (slides.main.isThere)
            checkSet(slides.main, findings);
        if (slides.fallBack.isThere)
            checkSet(slides.fallBack, findings);
        if (anySlides && !slides.main.isThere && !slides.fallBack.isThere)
            findings.push_back({Severity::Warning, "slide-folder-missing", slides.main.folder,
                                "the media have slides, but none in this language: the built-in one is shown"});
    }
    if (!anySlides)
        findings.push_back({Severity::Note, "no-slides", found.media + "/GTA", "the built-in slide is shown"});
}

} // namespace vant::media

#pragma once
#include "plan/Plan.hpp"
#include "read/Lists.hpp"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vant::media {

/// What is to be looked at.
struct Request {
    std::string media;                       ///< empty: a site alone
    std::optional<std::string> settings;     ///< instead of the media's own
    std::optional<std::string> selection;    ///< instead of the media's own
    std::optional<std::string> webSelection; ///< nothing: the media view
    std::string site = "http://site";        ///< what relative addresses of the web selection are below
    bool isSiteVisited = false;              ///< archives come from the site, not from beside the web selection
    bool isOffline = false;                  ///< the site cannot be reached, so that no archive arrives
    std::string tables;                      ///< folder of the plug-in's string tables
};

/// A file of a slide set; the text is nothing for a file that is not there or no text.
struct SlideSet {
    std::string folder; ///< of the language
    bool isThere = false;
    bool hasImage = false;
    bool hasTextFile = false;
    std::optional<std::string> text;
};

/// The slides of one language: the media's set, and the one that is fallen back on.
struct LanguageSlides {
    std::string code;
    SlideSet main;
    SlideSet fallBack;
};

/// Where colour profiles come from, for the packages that call for them.
struct ProfileSource {
    std::string folder; ///< the folder that the pane copies from; empty when the media have no installer folder
    bool isFolder = false;
    bool isThere = false;
    std::vector<std::string> profiles; ///< names in the folder
    std::vector<std::string> archives; ///< names in the folder, sorted
};

/// All that was found.
struct Survey {
    std::string media; ///< empty: there are none, and only the web selection was read
    SelectionFile selection;
    SettingsFile settings;
    std::optional<SelectionFile> web;
    std::vector<std::optional<std::string>> archives; ///< files beside the web selection, one for each component
    std::vector<std::string> archiveFaults;  ///< one for each component of the web selection; empty when there is none
    std::vector<std::string> strayLanguages; ///< paths of slide folders of no known language
    std::vector<std::string> modelsWithoutManual;
    std::vector<LanguageSlides> slides;
    ProfileSource profiles;
    PlanInput input;
};

/// Looks at media as ./run lays them out for its host. Reads lists, slides and folders, and of the archives beside the
/// web selection what they hold; packages are not opened. Main thread.
[[nodiscard]] Survey survey(const Request &request);

} // namespace vant::media

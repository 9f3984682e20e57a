#pragma once
#include "read/ArchiveListing.hpp"
#include "read/ArchiveReading.hpp"
#include "read/Survey.hpp"
#include "site/ContentKind.hpp"
#include "site/Fetch.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vant::media {

/// One archive of a site: how it arrived and what it holds.
struct SiteArchive {
    Fetched fetched;
    bool isFetched = false; ///< whether there was an address to ask for
    std::string file;       ///< where it lies now
    ContentKind kind = ContentKind::Empty;
    ArchiveState listed;    ///< not asked for unless it arrived and its content suits its ending
    ExpansionState content; ///< not asked for unless it can be listed and is neither too large nor leads out
};

/// A download site as it was found.
struct Site {
    std::string address;
    Fetched selection; ///< of its list of components, if that was fetched
    bool isSelectionFetched = false;
    std::vector<SiteArchive> archives; ///< one for each component of the web selection
};

/// How a site is visited.
struct Visit {
    std::string folder; ///< what is fetched is written into it; exists, and is empty
    std::string tool;   ///< the one that expands archives
    FetchLimits limits;
    FetchProgress fetching;
    std::function<void(const std::string &archive)> reading; ///< told before each archive is looked into
};

/// The name of the list of components below a site's address.
inline constexpr std::string_view siteSelection = "SelectedInput.plist";

/// Fetches the site's list of components into the folder and gives its path. Main thread.
[[nodiscard]] std::string fetchSelection(Site &site, const Visit &visit);

/// Fetches every archive that the web selection names, and looks into it. What each holds is put into the survey's
/// input. Main thread.
void visitArchives(Site &site, Survey &found, const Visit &visit);

} // namespace vant::media

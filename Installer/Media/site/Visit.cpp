#include "site/Visit.hpp"

#include "base/Paths.hpp"
#include "Locations.hpp"
#include "plan/Contents.hpp"
#include "read/Interruption.hpp"

#include <algorithm>
#include <set>

namespace vant::media {
namespace {

/// Names for the files of one folder, no two the same.
class Names {
public:
    std::string next(const std::string &address) {
        std::string name(destinationName(address));
        if (name.empty() || name == "." || name == "..")
            name = "archive";
        std::string free = name;
        for (int number = 2; !taken_.insert(free).second; ++number)
            free = std::to_string(number) + "-" + name;
        return free;
    }

private:
    // The list of components may lie there, too.
    std::set<std::string> taken_{std::string(siteSelection)};
};

/// What the archive holds, as the pane would find it.
void lookInto(SiteArchive &archive, ArchiveKind form, const std::string &tool) {
    if (!archive.isFetched || !hasArrived(archive.fetched))
        return;
    archive.kind = contentKindOfFile(archive.file);
    if (!suits(archive.kind, form))
        return;
    const bool isZip = form == ArchiveKind::Zip;
    archive.listed = readArchive(archive.file, isZip);
    if (archive.listed.fault.empty() && archive.listed.outside.empty())
        archive.content = readExpanded(tool, archive.file, isZip, packagesAmong);
}

std::vector<FetchOrder> ordersFor(Site &site, const Survey &found, const std::string &folder) {
    std::vector<FetchOrder> orders;
    Names names;
    for (std::size_t i = 0; i < found.input.web.size(); ++i) {
        const auto &address = found.input.web[i].address;
        site.archives[i].isFetched = address && !address->empty();
        if (!site.archives[i].isFetched)
            continue;
        site.archives[i].file = std::string(folder).append("/").append(names.next(*address));
        orders.push_back({*address, site.archives[i].file});
    }
    return orders;
}

void takeFetched(Site &site, std::vector<Fetched> fetched) {
    auto next = fetched.begin();
    for (SiteArchive &archive : site.archives)
        if (archive.isFetched)
            archive.fetched = std::move(*next++);
}

} // namespace

std::string fetchSelection(Site &site, const Visit &visit) {
    std::string file = std::string(visit.folder).append("/").append(siteSelection);
    const FetchOrder order{host::absoluteLocation(siteSelection, site.address), file};
    FetchLimits limits = visit.limits;
    limits.largest = std::min<std::uint64_t>(limits.largest, largestList);
    site.selection = fetch({&order, 1}, limits, [](std::size_t, std::uint64_t) {}).front();
    site.isSelectionFetched = true;
    return file;
}

void visitArchives(Site &site, Survey &found, const Visit &visit) {
    site.archives.resize(found.input.web.size());
    takeFetched(site, fetch(ordersFor(site, found, visit.folder), visit.limits, visit.fetching));
    for (std::size_t i = 0; i < site.archives.size(); ++i) {
        throwIfInterrupted();
        WebComponent &web = found.input.web[i];
        visit.reading(web.address.value_or(""));
        lookInto(site.archives[i], archiveKind(destinationName(web.address.value_or(""))), visit.tool);
        web.items = site.archives[i].content.items;
    }
}

} // namespace vant::media

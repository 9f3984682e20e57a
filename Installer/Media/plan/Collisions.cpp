#include "plan/Collisions.hpp"

#include <map>

namespace vant::media {
namespace {

using Counts = std::map<std::string, std::size_t>;

void add(std::vector<Collision> &collisions, Collision::Kind kind, const Counts &counts) {
    for (const auto &[name, count] : counts)
        if (count > 1)
            collisions.push_back({kind, name, count});
}

} // namespace

std::string_view collisionName(Collision::Kind kind) noexcept {
    switch (kind) {
    case Collision::Kind::PackageName:
        return "package name";
    case Collision::Kind::DownloadFile:
        return "download file";
    case Collision::Kind::ExpandedFolder:
        break;
    }
    return "expanded folder";
}

std::vector<Collision> collisionsOf(const Plan &plan) {
    Counts packages;
    for (const PlannedPackage &package : plan.packages)
        ++packages[packageName(package)];
    Counts files;
    Counts folders;
    for (const Download &download : plan.downloads)
        // Archives of one file name share their folder anyway.
        if (!download.file.empty() && ++files[download.file] == 1)
            ++folders[download.folder];
    std::vector<Collision> collisions;
    add(collisions, Collision::Kind::PackageName, packages);
    add(collisions, Collision::Kind::DownloadFile, files);
    add(collisions, Collision::Kind::ExpandedFolder, folders);
    return collisions;
}

} // namespace vant::media

#include "GNUstep/tools/tree/Staging.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/tree/Removal.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <random>

namespace vant::tools {

namespace fs = std::filesystem;

namespace {

constexpr mode_t ownersAlone = 0700;
constexpr mode_t readableByAll = 0755;

bool isThere(const fs::path &path) {
    std::error_code problem;
    return fs::symlink_status(path, problem).type() != fs::file_type::not_found;
}

std::string plainPath(const std::string &folder) {
    const auto path = fs::absolute(folder).lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

std::string randomName(const std::string &prefix) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device random;
    std::string name = prefix;
    for (int i = 0; i < 12; ++i)
        name += letters[random() % letters.size()];
    return name;
}

} // namespace

Staging::Staging(const std::string &wanted, const std::string &prefix, Place place)
    : wanted_(plainPath(wanted)), merges_(place == Place::Inside || isThere(wanted)) {
    const auto above = merges_ ? fs::path(wanted_) : fs::path(wanted_).parent_path();
    folder_ = above / randomName(prefix);
    for (auto at = above; !isThere(at) && at != at.parent_path(); at = at.parent_path())
        missing_.push_back(at);
    std::ranges::reverse(missing_);
}

void Staging::create() const {
    for (const auto &folder : missing_)
        if (::mkdir(folder.c_str(), readableByAll) != 0 && errno != EEXIST)
            throw systemError(folder, errno);
    if (::mkdir(folder_.c_str(), ownersAlone) != 0)
        throw systemError(wanted_, errno);
}

std::string Staging::makeFolder(const std::string &name) const {
    auto path = folder_ + '/' + name;
    if (::mkdir(path.c_str(), readableByAll) != 0)
        throw systemError(path, errno);
    return path;
}

void Staging::remove() const noexcept {
    std::error_code problem;
    if (fs::symlink_status(folder_, problem).type() == fs::file_type::directory)
        removeTree(folder_);
}

void Staging::removeMadeFolders() const noexcept {
    std::error_code ignored;
    for (auto folder = missing_.rbegin(); folder != missing_.rend(); ++folder)
        fs::remove(*folder, ignored);
}

} // namespace vant::tools

#include "GNUstep/tools/tree/Removal.hpp"

#include <system_error>

namespace vant::tools {

namespace fs = std::filesystem;

void removeTree(const fs::path &folder) noexcept {
    std::error_code problem;
    for (auto item = fs::recursive_directory_iterator(folder, problem); item != fs::end(item); item.increment(problem))
        if (item->is_directory(problem) && !item->is_symlink(problem))
            fs::permissions(item->path(), fs::perms::owner_all, fs::perm_options::add, problem);
    fs::remove_all(folder, problem);
}

} // namespace vant::tools

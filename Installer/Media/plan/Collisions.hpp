#pragma once
#include "plan/Plan.hpp"

namespace vant::media {

/// Things of a plan that share a name and must not.
struct Collision {
    enum class Kind {
        PackageName,    ///< packages that share an outcome: the list never completes, and the host ends
        DownloadFile,   ///< archives that are downloaded to one file
        ExpandedFolder, ///< archives of different names that are expanded into one folder
    };
    Kind kind = Kind::PackageName;
    std::string name; ///< empty for packages without a path
    std::size_t count = 0;
};
[[nodiscard]] std::string_view collisionName(Collision::Kind kind) noexcept;

/// Every collision of a plan, by kind and name.
[[nodiscard]] std::vector<Collision> collisionsOf(const Plan &plan);

} // namespace vant::media

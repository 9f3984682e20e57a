#pragma once
#include "GNUstep/files/Descriptor.hpp"

#include <string>
#include <vector>

namespace vant::tools {

/// Moves the contents of one folder into another on the same volume: folders that are there already stay, files and
/// links are replaced. All of it can be taken back. Errors are ExpansionErrors that name the item. One thread.
class Merge {
public:
    /// How to treat a symbolic link found where a folder is needed.
    enum class Links {
        Refused,        ///< an error: nothing is written through it
        FollowedInside, ///< followed, with the destination as "/": it never leads out
    };

    Merge(const std::string &from, const std::string &into, Links links);

    /// Throws with everything taken back when one item can't be moved.
    void run();
    /// Puts everything back to where it was, as far as the system lets it.
    void undo() noexcept;

private:
    struct Step {
        std::string path;
        bool exchanged; ///< with something that stood there, which lies in `from` since
    };

    void mergeFolder(const std::string &path);
    void mergeItem(int from, int into, const std::string &name, const std::string &path);
    void move(int from, int into, const std::string &name, const std::string &path, bool replaces);
    void takeBack(const Step &step) const;
    [[nodiscard]] static Descriptor folderIn(const Descriptor &top, const std::string &path, Links links);

    Descriptor from_;
    Descriptor into_;
    Links links_;
    std::vector<Step> steps_;
};

} // namespace vant::tools

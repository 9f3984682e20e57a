#pragma once
#include <string>
#include <vector>

namespace vant::tools {

/// A hidden folder on the same volume in which the result is prepared before it is moved into place. Planning it
/// touches nothing, so that one process can create it and another remove it.
class Staging {
public:
    enum class Place {
        Fitting, ///< in the wanted folder when that exists, beside it otherwise
        Inside,  ///< in the wanted folder, which is made when it is missing
    };

    /// `prefix` begins the hidden folder's name.
    Staging(const std::string &wanted, const std::string &prefix, Place place = Place::Fitting);

    /// Creates the folder, and those above it where they are missing. Throws ExpansionError.
    void create() const;
    /// Creates a folder in it and gives its path. Throws ExpansionError.
    [[nodiscard]] std::string makeFolder(const std::string &name) const;
    /// Removes it with all that is left in it.
    void remove() const noexcept;
    /// Removes those of the folders above it that `create` made and that are empty.
    void removeMadeFolders() const noexcept;

    [[nodiscard]] const std::string &folder() const { return folder_; }
    /// The wanted folder's full path.
    [[nodiscard]] const std::string &wanted() const { return wanted_; }
    /// Whether the wanted folder was there when this was planned.
    [[nodiscard]] bool mergesInto() const { return merges_; }

private:
    std::string wanted_;
    bool merges_;
    std::string folder_;
    std::vector<std::string> missing_; ///< folders to be made above it, topmost first
};

} // namespace vant::tools

#pragma once
#include "GNUstep/tools/package/Package.hpp"
#include "GNUstep/tools/process/PrivateRoot.hpp"

#include <string>
#include <vector>

namespace vant::tools {

/// Runs packages' scripts, each with the arguments and variables that the platform gives them, in a private root in
/// which the volume is "/". Throws ExpansionError when one can't be run, fails, or takes longer than ten minutes.
class PackageScripts {
public:
    PackageScripts(const Package &package, std::filesystem::path volume)
        : package_(package), root_(std::move(volume)) {}

    /// Throws when scripts can't be run on this machine, unless the package has none.
    void makeSureTheyRun() const;
    /// Runs these scripts of a component, which lie in a folder of the volume ("/.installer-x/Scripts").
    void run(const Component &component, const std::vector<std::string> &names, const std::string &folder) const;

private:
    const Package &package_;
    PrivateRoot root_;
};

} // namespace vant::tools

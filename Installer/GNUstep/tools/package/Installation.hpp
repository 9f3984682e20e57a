#pragma once
#include "GNUstep/tools/package/InstallReport.hpp"
#include "GNUstep/tools/package/Package.hpp"
#include "GNUstep/tools/package/PackageScripts.hpp"
#include "GNUstep/tools/process/Watchdog.hpp"
#include "GNUstep/tools/tree/Staging.hpp"

#include <cstdint>
#include <string>

namespace vant::tools {

/// Installs a package on a volume: unpacks everything into the staging folder, runs the scripts that come before, moves
/// the files to their places, runs the scripts that come after. Throws ExpansionError, and then no file of the package
/// is left; what its scripts did stays. One installation an object.
class Installation {
public:
    Installation(const Package &package, const Staging &staging, InstallReport &report, const Watchdog &watchdog);

    void run();

private:
    void stageBundleScripts() const;
    void stage(std::size_t index, Part part, ByteSource &source);
    [[nodiscard]] static std::string folderFor(std::size_t index, Part part);
    void joinPayloads() const;
    void putInPlace();
    void runScripts(bool afterwards);
    void progress(std::uint64_t taken);

    const Package &package_;
    const Staging &staging_;
    InstallReport &report_;
    const Watchdog &watchdog_;
    PackageScripts scripts_;
    std::string joined_; ///< folder in which all payloads are joined, laid out as the volume
    std::uint64_t finished_ = 0;
};

} // namespace vant::tools

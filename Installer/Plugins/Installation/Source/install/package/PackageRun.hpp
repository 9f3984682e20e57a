#pragma once
#include "install/package/InstallerOutput.hpp"
#include "install/package/InstallerStream.hpp"
#include "install/package/InstallProgress.hpp"
#include "selection/Flow.hpp"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace vant {

/// How a package has ended, as far as its output tells.
enum class InstallOutcome { Completed, PipeEnd, Failed };

/// One package of a flow's list, as its record describes it.
struct Package {
    Flow flow = Flow::Media;
    std::string path;          ///< full path; empty when the record has none
    std::string componentName; ///< the component's name or kind; empty when the record has none
};

/// The system's package installer.
inline constexpr const char *installerTool = "/usr/sbin/installer";
/// Its arguments for one package, in order. The target is always the root volume.
using InstallerArguments = std::array<std::string, 5>;
[[nodiscard]] InstallerArguments installerArguments(std::string_view packagePath);

/// The pane as a package run sees it: all that an installer thread asks of the rest of the pane. Each is called on the
/// installer thread.
class PackageRunPane {
public:
    /// Launches the installer with administrator rights; gives the platform's result code, and its output on success.
    virtual int launchInstaller(const InstallerArguments &arguments, std::FILE *&output) = 0;
    /// Installs colour profiles when a package of this name calls for them; blocks until they are copied.
    virtual void installColourProfiles(const std::string &packageFileName) = 0;

    /// Where the flow's list stands.
    [[nodiscard]] virtual ListPosition position() const = 0;
    /// The installation bar's current value.
    [[nodiscard]] virtual double barValue() const = 0;
    /// Keeps the progress of the whole list, 0 to 100, which the media flow's bar shows.
    virtual void setProgress(double progress) = 0;
    /// Brings bar and status line up to date for a percentage of this package, later, on the main thread.
    virtual void showProgress(const Package &package, double percentage) = 0;

    /// The result code of the last authorization call, or of the output's end. Hosts may change it during a run.
    [[nodiscard]] virtual int status() const = 0;
    /// Keeps a result code.
    virtual void setStatus(int code) = 0;
    /// Keeps the outcome under the package's file name; a later one replaces it.
    virtual void recordOutcome(const std::string &packageFileName, InstallOutcome outcome) = 0;
    /// Announces the next package, or that the list is done.
    virtual void announceWhatFollows(Flow flow) = 0;
    /// Writes a trace entry when tracing is on.
    virtual void trace(std::string_view message) = 0;

protected:
    ~PackageRunPane() = default;
};

/// The installation of one package, from its launch to the announcement of what follows it. Lives on the package's own
/// installer thread.
class PackageRun {
public:
    PackageRun(Package package, PackageRunPane &pane);

    /// Installs the package. Blocks for as long as the installer runs. A launch that is refused ends the run, and with
    /// it the chain, without an outcome.
    void install();

private:
    void readOutput(InstallerStream &output);
    void takeProgress(const Percentage &percentage);
    void endSuccessfully();
    void endFailed();
    void endWithOutput();

    Package package_;
    std::string fileName_;
    PackageRunPane &pane_;
};

} // namespace vant

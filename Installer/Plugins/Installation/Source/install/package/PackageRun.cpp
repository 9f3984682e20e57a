#include "install/package/PackageRun.hpp"

#include "base/Paths.hpp"
#include "install/package/MarkerFile.hpp"
#include "install/status/ComponentName.hpp"

#include <utility>

#include "base/AlwaysAssert.h"

namespace vant {

namespace {

constexpr int noErr = 0;
constexpr int outputEndedStatus = -1278;

} // namespace

InstallerArguments installerArguments(std::string_view packagePath) {
    return {"-verboseR", "-pkg", std::string(packagePath), "-target", "/"};
}

PackageRun::PackageRun(Package package, PackageRunPane &pane)
    : package_(std::move(package)), fileName_(lastPathComponent(package_.path)), pane_(pane) {}

void PackageRun::install() {
    std::FILE *stream = nullptr;
    pane_.setStatus(pane_.launchInstaller(installerArguments(package_.path), stream));
    if (pane_.status() != noErr) {
        // The chain stops here: going on would ask for every further package of a run that the user has refused.
        pane_.trace("***ERROR*** Authorization error:[" + std::to_string(pane_.status()) + "]");
        return;
    }
    InstallerStream output(stream);
    pane_.installColourProfiles(fileName_);
    if (isPrinterDriver(package_.flow, package_.componentName))
        createMarkerFile();
    readOutput(output);
    pane_.announceWhatFollows(package_.flow);
    // An installer that still writes would be killed by a closed stream.
    output.drain();
}

void PackageRun::readOutput(InstallerStream &output) {
    while (const char *text = output.nextLine()) {
        const InstallerLine line = readInstallerLine(text);
        if (line.percentage)
            takeProgress(*line.percentage);
        if (line.verdict == LineVerdict::Success)
            return endSuccessfully();
        if (line.verdict == LineVerdict::Failure)
            return endFailed();
    }
    endWithOutput();
}

void PackageRun::takeProgress(const Percentage &percentage) {
    const double progress = installProgress(percentage.value, pane_.position());
    pane_.setProgress(progress);
    // Lines that move nothing queue nothing, so that a chatty installer leaves the main thread alone.
    if (progress > pane_.barValue())
        pane_.showProgress(package_, percentage.value);
    if (percentage.whole == 100)
        pane_.recordOutcome(fileName_, InstallOutcome::Completed);
}

void PackageRun::endSuccessfully() {
    removeMarkerFile();
    const int status = pane_.status();
    assert(status == noErr);
    static_cast<void>(status);
}

void PackageRun::endFailed() {
    const int status = pane_.status();
    if (package_.flow == Flow::Web || status == noErr)
        pane_.trace("ASSERT !!!");
    pane_.recordOutcome(fileName_, InstallOutcome::Failed);
    if (status == noErr)
        assert(false);
    removeMarkerFile();
}

void PackageRun::endWithOutput() {
    removeMarkerFile();
    pane_.recordOutcome(fileName_, InstallOutcome::PipeEnd);
    pane_.setStatus(outputEndedStatus);
}

} // namespace vant

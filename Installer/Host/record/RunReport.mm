#import "RunReport.h"

#import "DownloadFolder.h"

#include <cstdio>
#include <fstream>
#include <unistd.h>

using namespace vant::host;

static std::string text(NSString *value) {
    return value != nil ? [value UTF8String] : "";
}

/// What the host itself knows of each package: how its installer ended, what that said, and what it left.
static void addFindings(std::vector<Package> &packages, const RunWitnesses &witnesses, const std::string &log,
                        const std::string &volume) {
    std::vector<Mark> marks = [witnesses.recorder marks];
    // A package that is still at work has no end yet.
    marks.push_back(markNow(STDERR_FILENO));
    const auto messages = messagesBetween(log, marks);
    const auto files = filesBetween(volume, marks);
    for (std::size_t i = 0; i < packages.size(); ++i) {
        packages[i].exitStatus = [witnesses.tools statusOfPackage:packages[i].path];
        if (i < messages.size())
            packages[i].messages = messages[i];
        if (i < files.size())
            packages[i].installedFiles = files[i];
    }
}

static Summary summaryOf(const HostSettings &settings, const Ending &end, const RunWitnesses &witnesses) {
    const std::string volume = text(settings.installRoot);
    const std::string log = logText(STDERR_FILENO);
    NSDictionary *information = [[NSBundle bundleWithPath:settings.bundle] infoDictionary];
    Summary summary = {
        .version = text([information objectForKey:@"CFBundleShortVersionString"]),
        .flow = text(settings.flow),
        .language = text(settings.language),
        .continued = end.continued(),
        .valid = witnesses.pane != nil ? text([witnesses.pane isValid]) : "NO",
        .status = text([witnesses.pane status]),
        .reason = end.reason,
        .errorCode = [witnesses.pane downloadError],
        .packages = {},
        .notExpanded = expansionFailures(log, text(VantDownloadFolder())),
        .setAside = folderNames(text([NSHomeDirectory() stringByAppendingPathComponent:@"Desktop/QuorvelPrinter"])),
        .installedFiles = volume.empty() ? 0 : fileCount(volume),
    };
    if (witnesses.pane == nil)
        return summary;
    summary.packages = [witnesses.pane packages];
    addFindings(summary.packages, witnesses, log, volume);
    return summary;
}

int VantWriteReport(const HostSettings &settings, const Ending &end, const RunWitnesses &witnesses, double seconds) {
    Summary summary = summaryOf(settings, end, witnesses);
    summary.seconds = seconds;
    NSString *file = [settings.output stringByAppendingPathComponent:@"summary.json"];
    if (file == nil)
        return exitStatus(summary);
    // Whoever waits for the file finds it whole: it is written beside its place and moved there.
    const std::string path = [file UTF8String];
    std::ofstream(path + ".part") << json(summary);
    std::rename((path + ".part").c_str(), path.c_str());
    return exitStatus(summary);
}

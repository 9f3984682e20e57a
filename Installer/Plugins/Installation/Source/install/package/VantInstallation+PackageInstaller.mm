#import "install/package/VantInstallation+PackageInstaller.h"

#import "base/Bridge.h"
#import "base/MainQueue.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#include "base/SharedValue.hpp"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/profiles/VantInstallation+ICCProfiles.h"
#import "install/status/VantInstallation+RunEvents.h"
#import "install/status/VantInstallation+StatusLine.h"
#import "selection/ComponentRecord.h"
#import "selection/VantInstallation+PackageLists.h"

/// What a package run asks of the pane; see `vant::PackageRunPane`.
@interface VantInstallation (PackageRunPane)
- (int)launchInstallerWithArguments:(vant::InstallerArguments)words output:(FILE **)output;
- (vant::ListPosition)positionInFlow:(vant::Flow)flow;
- (double)shownProgress;
- (void)setProgress:(double)progress;
- (void)showProgressOfPackage:(const vant::Package &)package percentage:(double)percentage;
- (int)status;
- (void)setStatus:(int)code;
- (void)recordOutcome:(vant::InstallOutcome)outcome forKey:(NSString *)fileName;
@end

NSString *VantOutcomeWord(vant::InstallOutcome outcome) {
    switch (outcome) {
    case vant::InstallOutcome::Completed:
        return @"Completed";
    case vant::InstallOutcome::PipeEnd:
        return @"PIPE END";
    case vant::InstallOutcome::Failed:
        break;
    }
    return @"Failed";
}

namespace {

/// A record's package. A value that is no string counts as absent.
vant::Package packageOfRecord(id record, vant::Flow flow) {
    const bool isWeb = flow == vant::Flow::Web;
    return {.flow = flow,
            .path = vant::utf8(VantStringForKey(record, isWeb ? VantInstallerPathKey : VantLocationKey)),
            .componentName = vant::utf8(VantStringForKey(record, isWeb ? VantComponentNameKey : VantTypeKey))};
}

class InstallerThreadPane final : public vant::PackageRunPane {
public:
    InstallerThreadPane(VantInstallation *pane, vant::Flow flow) : pane_(pane), flow_(flow) {}

    int launchInstaller(const vant::InstallerArguments &arguments, std::FILE *&output) override {
        return [pane_ launchInstallerWithArguments:arguments output:&output];
    }
    void installColourProfiles(const std::string &packageFileName) override {
        [pane_ installICCProfilesIfRequired:vant::nsString(packageFileName)];
    }
    [[nodiscard]] vant::ListPosition position() const override { return [pane_ positionInFlow:flow_]; }
    [[nodiscard]] double barValue() const override { return [pane_ shownProgress]; }
    void setProgress(double progress) override { [pane_ setProgress:progress]; }
    void showProgress(const vant::Package &package, double percentage) override {
        [pane_ showProgressOfPackage:package percentage:percentage];
    }
    [[nodiscard]] int status() const override { return [pane_ status]; }
    void setStatus(int code) override { [pane_ setStatus:code]; }
    void recordOutcome(const std::string &packageFileName, vant::InstallOutcome outcome) override {
        [pane_ recordOutcome:outcome forKey:vant::nsString(packageFileName)];
    }
    void announceWhatFollows(vant::Flow flow) override { [pane_ announceWhatFollowsInFlow:flow]; }
    void trace(std::string_view message) override { [pane_ trace:@"%@", vant::nsString(message)]; }

private:
    VantInstallation *pane_;
    vant::Flow flow_;
};

} // namespace

@implementation VantInstallation (PackageInstaller)

- (void)installCompoentAtPath:(NSDictionary *)webRecord {
    [self installRecord:webRecord ofFlow:vant::Flow::Web];
}

- (void)installCDComponentAtPath:(NSDictionary *)mediaRecord {
    [self installRecord:mediaRecord ofFlow:vant::Flow::Media];
}

- (void)installRecord:(NSDictionary *)record ofFlow:(vant::Flow)flow {
    @autoreleasepool {
        InstallerThreadPane pane(self, flow);
        vant::PackageRun(packageOfRecord(record, flow), pane).install();
    }
}

@end

@implementation VantInstallation (PackageRunPane)

- (int)launchInstallerWithArguments:(vant::InstallerArguments)words output:(FILE **)output {
    std::array<char *, words.size() + 1> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i)
        arguments.at(i) = words.at(i).data();
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    const int result = AuthorizationExecuteWithPrivileges(authorizationRef, vant::installerTool,
                                                          kAuthorizationFlagDefaults, arguments.data(), output);
#pragma clang diagnostic pop
    if (result != noErr)
        [self runHasStopped];
    return result;
}

- (vant::ListPosition)positionInFlow:(vant::Flow)flow {
    return {.index = vant::sharedValue(cdInstallIndex), .packages = [self packageCountInFlow:flow]};
}

- (double)shownProgress {
    return vant::sharedValue(mShownInstallationProgress);
}

- (void)setProgress:(double)progress {
    vant::setSharedValue(mProgressindicatorValue, progress);
}

- (void)showProgressOfPackage:(const vant::Package &)package percentage:(double)percentage {
    @autoreleasepool {
        NSString *name = [self displayNameComponent:package.componentName inFlow:package.flow];
        NSString *text = [self displayInstallingForComponent:name];
        vant::onMainQueue([pane = vant::Retained<VantInstallation>::retain(self),
                           shown = vant::Retained<NSString>::retain(text), flow = package.flow, percentage] {
            [pane.get() updateProgressWithDoubleValue:[pane.get() barValueAtPercentage:percentage inFlow:flow]];
            [pane.get() updateInstallingTextField:shown.get()];
        });
    }
}

/// The bar's value when an update runs, by which time the chain may have gone on.
- (double)barValueAtPercentage:(double)percentage inFlow:(vant::Flow)flow {
    return flow == vant::Flow::Web ? vant::webBarValue(percentage, [self positionInFlow:flow])
                                   : vant::sharedValue(mProgressindicatorValue);
}

- (int)status {
    return vant::sharedValue(status);
}

- (void)setStatus:(int)code {
    vant::setSharedValue(status, code);
}

- (void)recordOutcome:(vant::InstallOutcome)outcome forKey:(NSString *)fileName {
    [mInstalledPackageDict setObject:VantOutcomeWord(outcome) forKey:fileName];
}

@end

#import "install/package/PackageRun.h"

#import "base/PropertyList.h"
#import "selection/ComponentRecord.h"

static NSString *textOrEmpty(id record, NSString *key) {
    NSString *text = VantStringForKey(record, key);
    return text == nil ? @"" : text;
}

VantPackageRun VantPackageRunOfRecord(id record, vant::InstallFlow flow) {
    const bool isWeb = flow == vant::InstallFlow::Web;
    NSString *path = textOrEmpty(record, isWeb ? VantInstallerPathKey : VantLocationKey);
    return {.flow = flow,
            .path = path,
            .fileName = [path lastPathComponent],
            .componentName = textOrEmpty(record, isWeb ? VantComponentNameKey : VantTypeKey)};
}

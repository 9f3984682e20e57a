#import "selection/VantInstallation+PackageLists.h"

@implementation VantInstallation (PackageLists)

- (NSMutableArray *)packagesInFlow:(vant::Flow)flow {
    return flow == vant::Flow::Web ? mInstallCompArrayForSmartUpdate : mInstallCompArrayForCDUpdate;
}

- (NSUInteger)packageCountInFlow:(vant::Flow)flow {
    return vant::withList([self packagesInFlow:flow], [](NSArray *list) { return [list count]; });
}

- (id)packageInFlow:(vant::Flow)flow atIndex:(NSUInteger)index {
    return vant::withList([self packagesInFlow:flow],
                          [index](NSArray *list) { return [[[list objectAtIndex:index] retain] autorelease]; });
}

- (void)addPackage:(id)record inFlow:(vant::Flow)flow {
    vant::withList([self packagesInFlow:flow], [record](NSMutableArray *list) { [list addObject:record]; });
}

@end

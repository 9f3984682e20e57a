#import "shell/VantInstallation.h"

#include "selection/Flow.hpp"

/// The two lists of packages to install. The main thread may still add to the web list (an archive that arrives after
/// the network was given up) while an installer thread counts and reads it, so each access is made whole here.
/// Thread: any.
@interface VantInstallation (PackageLists)
- (NSUInteger)packageCountInFlow:(vant::Flow)flow;
/// The record at a position; raises NSRangeException behind the list's end.
- (id)packageInFlow:(vant::Flow)flow atIndex:(NSUInteger)index;
- (void)addPackage:(id)record inFlow:(vant::Flow)flow;
@end

namespace vant {

/// Reads or changes a list while no other thread does.
template<class Work>
auto withList(NSMutableArray *list, Work work) {
    @synchronized(list) {
        return work(list);
    }
}

} // namespace vant

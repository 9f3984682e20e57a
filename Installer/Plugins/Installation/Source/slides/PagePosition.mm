#import "slides/PagePosition.h"

#import "base/Resources.h"

NSString *VantPagePosition(NSInteger page, NSMatrix *indicator) {
    return [NSString stringWithFormat:VantResourceString(@"PageIndicator"), static_cast<int>(page + 1),
                                      static_cast<int>([indicator numberOfColumns])];
}

#include "GNUstep/files/SubpathWalk.hpp"
#include "GNUstep/Hook.hpp"
#import <Foundation/Foundation.h>

namespace {

// GNUstep asks the file system about every item, under a path that it composes twice: for a folder of many items that
// takes several times as long as the listing. What it gives, and in what order, stays the same.
NSArray *subpaths(NSFileManager *files, SEL /*command*/, NSString *path) {
    BOOL folder = NO;
    if (![files fileExistsAtPath:path isDirectory:&folder] || !folder)
        return nil;
    NSMutableArray *items = [NSMutableArray array];
    const NSStringEncoding encoding = [NSString defaultCStringEncoding];
    vant::walkSubpaths([path fileSystemRepresentation], [=](std::string_view item) {
        NSString *name = [[NSString alloc] initWithBytes:item.data() length:item.size() encoding:encoding];
        if (name != nil)
            [items addObject:name];
        [name release];
        return name != nil;
    });
    return items;
}

} // namespace

/// Lists what lies below a folder as fast as the file system gives it.
@interface VantSubpathListing : NSObject
@end

@implementation VantSubpathListing

+ (void)load {
    @autoreleasepool {
        vant::hook([NSFileManager class], @selector(subpathsAtPath:), &subpaths);
    }
}

@end

#import <Foundation/Foundation.h>

#include "GNUstep/Hook.hpp"

namespace {

using FolderMaker = BOOL (*)(NSFileManager *, SEL, NSString *, BOOL, NSDictionary *, NSError **);

FolderMaker originalMaker;

NSError *occupiedError(NSString *path) {
    constexpr NSInteger fileWriteFileExists = 516;
    NSDictionary *information = [NSDictionary dictionaryWithObject:path forKey:NSFilePathErrorKey];
    return [NSError errorWithDomain:NSCocoaErrorDomain code:fileWriteFileExists userInfo:information];
}

// GNUstep says YES when a file stands where the last folder is to be.
BOOL makeFolder(NSFileManager *files, SEL command, NSString *path, BOOL withParents, NSDictionary *attributes,
                NSError **error) {
    if (!originalMaker(files, command, path, withParents, attributes, error))
        return NO;
    BOOL folder = NO;
    if ([files fileExistsAtPath:path isDirectory:&folder] && folder)
        return YES;
    if (error != nullptr)
        *error = occupiedError(path);
    return NO;
}

} // namespace

/// Makes the creation of a folder fail where a file stands in its place.
@interface VantFolderCreation : NSObject
@end

@implementation VantFolderCreation

+ (void)load {
    @autoreleasepool {
        SEL name = @selector(createDirectoryAtPath:withIntermediateDirectories:attributes:error:);
        originalMaker = vant::hook([NSFileManager class], name, &makeFolder);
    }
}

@end

#import <Foundation/Foundation.h>

// GNUstep's, declared in no header of its own.
extern "C" const char *GSPathHandling(const char *mode);

/// Has paths read as on the platform: by default GNUstep also takes a backslash for a separator and "C:" for a drive,
/// so that a folder of that name is entered over and over. Holds for the whole process, the host included.
@interface VantPathHandling : NSObject
@end

@implementation VantPathHandling

+ (void)load {
    GSPathHandling("unix");
}

@end

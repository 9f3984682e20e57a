#import "OwnFolder.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

static std::string ownFolder;

NSString *VantEnterOwnFolder(void) {
    std::string folder = [[NSTemporaryDirectory() stringByAppendingPathComponent:@"VantHost-XXXXXX"] UTF8String];
    if (mkdtemp(folder.data()) == nullptr || chdir(folder.c_str()) != 0)
        return nil;
    ownFolder = folder;
    return [NSString stringWithUTF8String:folder.c_str()];
}

void VantLeaveOwnFolder(void) {
    if (!ownFolder.empty())
        rmdir(ownFolder.c_str());
}

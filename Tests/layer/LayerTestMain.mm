#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

int main(int count, char **arguments) {
    @autoreleasepool {
        testing::InitGoogleTest(&count, arguments);
        return RUN_ALL_TESTS();
    }
}

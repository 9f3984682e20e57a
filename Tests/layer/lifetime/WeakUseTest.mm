#import <AppKit/AppKit.h>

#include <cstdlib>
#import <Foundation/NSDebug.h>
#include <gtest/gtest.h>
#include <string>

static int heard = 0;

/// Counts what it hears, whichever object it is: a message to one that has gone counts as well, or ends the process.
@interface VantWeakListener : NSObject
- (void)hear:(id)sender;
@end

@implementation VantWeakListener

- (void)hear:(id)sender {
    (void)sender;
    ++heard;
}

@end

/// What the platform forgets by itself when it goes.
class WeakUses : public testing::Test {
protected:
    static VantWeakListener *observer(NSString *name) {
        VantWeakListener *made = [[VantWeakListener alloc] init];
        [[NSNotificationCenter defaultCenter] addObserver:made selector:@selector(hear:) name:name object:nil];
        return made;
    }

    static int heardOf(NSString *name) {
        heard = 0;
        [[NSNotificationCenter defaultCenter] postNotificationName:name object:nil];
        return heard;
    }

    static NSActionCell *cellFor(id target) {
        [NSApplication sharedApplication];
        NSActionCell *cell = [[NSActionCell alloc] initImageCell:nil];
        [cell setTarget:target];
        return cell;
    }
};

TEST_F(WeakUses, AnObserverThatHasGoneHearsNothing) {
    VantWeakListener *gone = observer(@"told");
    VantWeakListener *stays = observer(@"told");
    EXPECT_EQ(heardOf(@"told"), 2);
    [gone release];
    EXPECT_EQ(heardOf(@"told"), 1);
    [[NSNotificationCenter defaultCenter] removeObserver:stays];
    EXPECT_EQ(heardOf(@"told"), 0);
    [stays release];
}

TEST_F(WeakUses, AnObserverThatRegistersAgainIsForgottenToo) {
    VantWeakListener *again = observer(@"first");
    [[NSNotificationCenter defaultCenter] removeObserver:again];
    [[NSNotificationCenter defaultCenter] addObserver:again selector:@selector(hear:) name:@"second" object:nil];
    EXPECT_EQ(heardOf(@"second"), 1);
    [again release];
    EXPECT_EQ(heardOf(@"second"), 0);
}

TEST_F(WeakUses, AControlHasNoTargetOnceThatHasGone) {
    VantWeakListener *target = [[VantWeakListener alloc] init];
    NSActionCell *cell = cellFor(target);
    EXPECT_EQ([cell target], target);
    [target release];
    EXPECT_EQ([cell target], nil);
    [cell release];
}

TEST_F(WeakUses, AControlKeepsItsNewTargetWhenTheOldOneGoes) {
    VantWeakListener *before = [[VantWeakListener alloc] init];
    VantWeakListener *now = [[VantWeakListener alloc] init];
    NSActionCell *cell = cellFor(before);
    [cell setTarget:now];
    [before release];
    EXPECT_EQ([cell target], now);
    [now release];
    EXPECT_EQ([cell target], nil);
    [cell release];
}

TEST_F(WeakUses, AControlThatHasGoneIsNotAskedWhenItsTargetGoes) {
    NSZombieEnabled = YES; // so that the control's memory tells of messages
    setenv("CRASH_ON_ZOMBIE", "YES", 1);
    VantWeakListener *target = [[VantWeakListener alloc] init];
    NSActionCell *cell = cellFor(target);
    [cell release];
    [target release];
    EXPECT_NE(target, nil);
}

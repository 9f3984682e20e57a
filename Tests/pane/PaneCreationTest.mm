#import "PaneTest.h"

#import "shell/VantInstallation+HostLink.h"
#import "ui/VantInstallation+PaneSetup.h"

#include "Jail.hpp"

using namespace vant::test;

/// Stands for an object that a timer calls.
@interface VantIdleTarget : NSObject
- (void)tick;
@end

@implementation VantIdleTarget
- (void)tick {
}
@end

namespace {

/// What the stand-ins below have seen, in order.
std::vector<std::string> seen;

void replace(Class type, SEL operation, IMP stand) {
    method_setImplementation(class_getInstanceMethod(type, operation), stand);
}

Class metaclass(Class type) {
    return object_getClass(type);
}

/// Loads no interface, and notes whom the pane already knows by then.
BOOL loadNothing(id, SEL, NSString *name, id owner) {
    seen.push_back(text(name) + " of " + text(field<id>(owner, "mObserver")));
    return YES;
}

BOOL failToLoad(id, SEL, NSString *, id) {
    return NO;
}

BOOL failToSetUp(id, SEL) {
    return NO;
}

void noteDestruction(id, SEL) {
    seen.emplace_back("destroyed");
}

void noteRemoval(id, SEL, id receiver) {
    seen.emplace_back([receiver isKindOfClass:paneClass()] ? "pane removed" : "another removed");
}

void noteRemovalOfName(id self, SEL operation, id receiver, NSString *, id) {
    noteRemoval(self, operation, receiver);
}

NSString *noteQuestion(id, SEL, NSString *key, NSString *second) {
    seen.push_back(text(key) + "," + text(second));
    return @"";
}

} // namespace

class PaneCreation : public PaneTest {
protected:
    PaneCreation() { seen.clear(); }
};

TEST_F(PaneCreation, TheObserverIsKnownBeforeTheInterfaceIsLoaded) {
    // The nib's objects may ask the pane for its host while they awake.
    replace(metaclass([NSBundle class]), @selector(loadNibNamed:owner:), reinterpret_cast<IMP>(loadNothing));
    createPane();
    EXPECT_EQ(seen, std::vector<std::string>{"VTInstallation of " + text(observer)});
}

TEST_F(PaneCreation, WithoutItsInterfaceThePaneIsGivenUp) {
    replace(metaclass([NSBundle class]), @selector(loadNibNamed:owner:), reinterpret_cast<IMP>(failToLoad));
    replace(paneClass(), @selector(dealloc), reinterpret_cast<IMP>(noteDestruction));
    createPane();
    EXPECT_EQ(seen, std::vector<std::string>{"destroyed"}) << "the caller has nothing left to release it by";
}

TEST_F(PaneCreation, WithoutAViewNothingIsSetUp) {
    writeMediaSelection(@[ entry(@"Print Driver", @"/a.pkg") ]);
    replace(metaclass([NSBundle class]), @selector(loadNibNamed:owner:), reinterpret_cast<IMP>(loadNothing));
    createPane();
    ASSERT_NE(pane, nil);
    EXPECT_EQ(field<id>(pane, "timer"), nil);
    EXPECT_EQ(field<id>(pane, "objects"), nil);
    EXPECT_EQ([[observer calls] count], 0U) << "the rights were asked for";
    EXPECT_EQ(field<id>(pane, "modelInfo"), model) << "the rest of the creation went on";
}

TEST_F(PaneCreation, AFailedSetUpIsTracedAndThePaneReturned) {
    writeSettings(@{@"Debug" : @"debug_on"});
    (void)paneClass();
    replace(paneClass(), @selector(setUpPane), reinterpret_cast<IMP>(failToSetUp));
    EXPECT_NE(createPane(), nil);
    EXPECT_NE(contentsOf(traceLog()).find("***ERROR*** Setup pane fail \n"), std::string::npos);
}

TEST_F(PaneCreation, DestructionStopsNothingThatThePaneHasStarted) {
    @autoreleasepool {
        createIdlePane();
    }
    VantIdleTarget *target = [[[VantIdleTarget alloc] init] autorelease];
    NSTimer *slides = [NSTimer scheduledTimerWithTimeInterval:15.0
                                                       target:target
                                                     selector:@selector(tick)
                                                     userInfo:nil
                                                      repeats:YES];
    field<NSTimer *>(pane, "timer") = [slides retain];
    std::vector<std::pair<id, NSUInteger>> held;
    for (const char *list : {"mInstalledPackageDict", "mInstallCompArrayForSmartUpdate", "mInstallCompArrayForCDUpdate",
                             "mUserOptionsFilePath5", "timer", "mObserver"})
        held.emplace_back(field<id>(pane, list), [field<id>(pane, list) retainCount]);
    replace([NSNotificationCenter class], @selector(removeObserver:), reinterpret_cast<IMP>(noteRemoval));
    replace([NSNotificationCenter class], @selector(removeObserver:name:object:),
            reinterpret_cast<IMP>(noteRemovalOfName));
    [pane release];
    // The table has registrations of its own, and hears nothing more of a pane that has gone.
    EXPECT_EQ(seen, std::vector<std::string>{"another removed"}) << "a handler of a running installation was taken out";
    EXPECT_TRUE([slides isValid]);
    for (const auto &[object, count] : held)
        EXPECT_EQ([object retainCount], count) << text(object);
}

TEST_F(PaneCreation, TheParserIsAskedWithTheKeyAndAnEmptyString) {
    // Parsers of hosts take two objects; one that looks into the second must find a string there.
    createIdlePane();
    replace([VantRecordingObserver class], @selector(getStringByKey:), reinterpret_cast<IMP>(noteQuestion));
    (void)[pane hostStringForKey:@"TONER.TITLE"];
    EXPECT_EQ(seen, std::vector<std::string>{"TONER.TITLE,"});
}

#import "PaneTest.h"

#import "install/chain/VantInstallation+InstallChain.h"
#import "shell/VantInstallation+HostLink.h"

#include "Jail.hpp"
#include <cstring>

/// Knows no operation of an observer itself, but passes all but one on.
@interface VantForwardingObserver : NSObject {
@public
    id receiver;
    SEL lacking;
}
@end

@implementation VantForwardingObserver

- (NSMethodSignature *)methodSignatureForSelector:(SEL)message {
    return lacking != nullptr && sel_isEqual(message, lacking) ? nil : [receiver methodSignatureForSelector:message];
}

- (void)forwardInvocation:(NSInvocation *)invocation {
    [invocation invokeWithTarget:receiver];
}

@end

using namespace vant::test;

namespace fs = std::filesystem;

namespace {

std::vector<std::string> startedLists;

/// Stands in for the operation that starts the media list, and notes what it is given.
void noteStart(id, SEL, id list) {
    startedLists.push_back(text(list));
}

void replaceInstanceMethod(Class type, SEL operation, IMP replacement) {
    method_setImplementation(class_getInstanceMethod(type, operation), replacement);
}

BOOL refuseToLoad(id, SEL, NSString *, id) {
    return NO;
}

std::string bytesOf(id object) {
    return {reinterpret_cast<const char *>(object), class_getInstanceSize(object_getClass(object))};
}

} // namespace

/// An observer that cannot do what an observer does.
@interface VantMuteObserver : NSObject
@end

@implementation VantMuteObserver
@end

/// An observer whose parser is of any kind.
@interface VantOddParserObserver : VantRecordingObserver {
    id parser;
}
- (void)setParser:(id)anyObject;
@end

@implementation VantOddParserObserver

- (void)setParser:(id)anyObject {
    parser = anyObject;
}

- (id)getLangParser {
    return parser;
}

@end

/// A parser whose answers are numbers.
@interface VantNumberParser : NSObject
- (id)getStringByKey:(NSString *)key;
@end

@implementation VantNumberParser

- (id)getStringByKey:(NSString *)key {
    return @([key length]);
}

@end

class PaneLifecycle : public PaneTest {};

TEST_F(PaneLifecycle, TheMediaListIsStartedThreeSecondsAfterCreation) {
    replaceInstanceMethod(paneClass(), @selector(InstallCDComponents:), reinterpret_cast<IMP>(noteStart));
    NSDate *created = [NSDate date];
    createPane();
    ASSERT_TRUE(waitUntil([] { return !startedLists.empty(); }));
    EXPECT_GE(-[created timeIntervalSinceNow], 3.0);
    EXPECT_LT(-[created timeIntervalSinceNow], 5.0);
    EXPECT_EQ(startedLists.front(), text(field<id>(pane, "mInstallCompArrayForCDUpdate")));
}

TEST_F(PaneLifecycle, TheMediaListIsStartedEvenWithoutAModelRecord) {
    replaceInstanceMethod(paneClass(), @selector(InstallCDComponents:), reinterpret_cast<IMP>(noteStart));
    createPane(nil);
    ASSERT_TRUE(waitUntil([] { return !startedLists.empty(); }));
    EXPECT_EQ(startedLists.front(), "(nil)");
}

TEST_F(PaneLifecycle, WithoutAModelRecordNothingElseIsSetUp) {
    writeSettings(@{@"Debug" : @"debug_on"});
    createPane(nil);
    for (const char *name : {"mInstallCompArrayForCDUpdate", "mInstallCompArrayForSmartUpdate", "mInstalledPackageDict",
                             "selectedarrXML", "objects", "timer", "modelInfo"})
        EXPECT_EQ(field<id>(pane, name), nil) << name;
    EXPECT_EQ([[pane model] count], 0U);
    EXPECT_FALSE(fs::exists(traceLog())) << "the message about the missing record comes before tracing is on";
}

TEST_F(PaneLifecycle, WithoutItsInterfaceDescriptionThereIsNoPane) {
    Class bundle = object_getClass([NSBundle class]);
    replaceInstanceMethod(bundle, @selector(loadNibNamed:owner:), reinterpret_cast<IMP>(refuseToLoad));
    EXPECT_EQ(createPane(), nil);
}

TEST_F(PaneLifecycle, CreationFillsTheStateRecord) {
    createPane();
    EXPECT_EQ(field<id>(pane, "modelInfo"), model);
    EXPECT_EQ(field<id>(pane, "mObserver"), observer);
    EXPECT_TRUE(field<BOOL>(pane, "uploadToRDSDone"));
    for (const char *name :
         {"mInstallationInProgressStatus", "mNonFlatInstaller", "mAuthCancelledOrError", "VantInstallationDebugFlag"})
        EXPECT_FALSE(field<BOOL>(pane, name)) << name;
    EXPECT_EQ(field<int>(pane, "mSmartUpdate"), 0);
    EXPECT_EQ(field<int>(pane, "mWebError"), 0);
    EXPECT_TRUE([field<id>(pane, "mInstalledPackageDict") isEqual:@{}]);
    EXPECT_TRUE([field<id>(pane, "mInstallCompArrayForSmartUpdate") isEqual:@[]]);
}

TEST_F(PaneLifecycle, CreationPreparesTheBars) {
    createPane();
    NSProgressIndicator *download = field<NSProgressIndicator *>(pane, "mVTPackageDownloadProg");
    EXPECT_FALSE([download isIndeterminate]);
    EXPECT_EQ([download minValue], 0.0);
    EXPECT_EQ([download maxValue], 100.0);
    EXPECT_TRUE([download isHidden]);
    EXPECT_TRUE([field<NSView *>(pane, "mVTPackageInstallationProg") isHidden]);
    EXPECT_FALSE([field<NSView *>(pane, "mVTPackageInstallationProgDummy") isHidden]);
}

TEST_F(PaneLifecycle, TheModelRecordIsTracedWhenTracingIsOn) {
    writeSettings(@{@"Debug" : @"debug_on"});
    [model setObject:@"a value to find" forKey:@"Other"];
    createPane();
    EXPECT_NE(contentsOf(traceLog()).find("a value to find"), std::string::npos);
}

TEST_F(PaneLifecycle, WithoutTheDebugSwitchNoTraceIsWritten) {
    writeSettings(@{@"Debug" : @"1"});
    createPane();
    (void)[pane model];
    EXPECT_FALSE(fs::exists(traceLog()));
}

TEST_F(PaneLifecycle, WithoutAnObserverEveryCallToItIsSkipped) {
    [model removeObjectForKey:@"Model Observer"];
    createPane();
    ASSERT_NE(pane, nil);
    EXPECT_EQ([pane langParser], nil);
    EXPECT_EQ([pane hostStringForKey:@"TONER.TITLE"], nil);
    EXPECT_EQ(text([pane isPluginValid]), "YES");
    EXPECT_EQ([field<NSArray *>(pane, "mInstallCompArrayForCDUpdate") count], 1U) << "the view was not started";
}

TEST_F(PaneLifecycle, AnObserverOfAnotherTypeIsSentNothingThatItDoesNotKnow) {
    for (id wrong in @[ @"observer", @7, @[], @{}, [[[VantMuteObserver alloc] init] autorelease] ]) {
        [model setObject:wrong forKey:@"Model Observer"];
        createPane();
        EXPECT_NE(pane, nil) << text(wrong);
        EXPECT_EQ(field<id>(pane, "mObserver"), wrong) << text(wrong);
        EXPECT_EQ([pane langParser], nil) << text(wrong);
        [pane tellHostToContinue];
    }
}

TEST_F(PaneLifecycle, AnObserverThatForwardsIsToldEverything) {
    VantForwardingObserver *forwarding = [[[VantForwardingObserver alloc] init] autorelease];
    forwarding->receiver = observer;
    [[observer strings] setObject:@"Toner" forKey:@"TONER.TITLE"];
    [model setObject:forwarding forKey:@"Model Observer"];
    createPane();
    EXPECT_EQ([observer countOf:@"setIsButton1Enabled:NO"], 1U);
    EXPECT_EQ([observer countOf:@"setIsButton3Hidden:YES"], 1U);
    EXPECT_EQ(text([pane hostStringForKey:@"TONER.TITLE"]), "Toner");
    [pane tellHostToContinue];
    EXPECT_EQ([observer countOf:@"continueToNextPlugin"], 1U);
}

TEST_F(PaneLifecycle, AnObserverThatLacksOneOperationIsToldTheOthersAndTheTraceSaysWhich) {
    VantForwardingObserver *partial = [[[VantForwardingObserver alloc] init] autorelease];
    partial->receiver = observer;
    partial->lacking = @selector(setIsButton2Enabled:);
    [model setObject:partial forKey:@"Model Observer"];
    writeSettings(@{@"Debug" : @"debug_on"});
    createPane();
    EXPECT_EQ([observer countOf:@"setIsButton2Enabled:NO"], 0U);
    EXPECT_EQ([observer countOf:@"setIsButton1Enabled:NO"], 1U);
    EXPECT_EQ([observer countOf:@"setIsButton3Enabled:NO"], 1U);
    EXPECT_NE(contentsOf(traceLog()).find("***ERROR*** Model Observer lacks [setIsButton2Enabled:]"),
              std::string::npos);
    [pane tellHostToContinue];
    EXPECT_EQ([observer countOf:@"continueToNextPlugin"], 1U);
}

TEST_F(PaneLifecycle, AParserThatGivesNoStringsLeavesTheTextsEmpty) {
    VantOddParserObserver *odd = [[VantOddParserObserver alloc] init];
    [model setObject:odd forKey:@"Model Observer"];
    for (id parser in @[ @"parser", @{}, [[[VantNumberParser alloc] init] autorelease] ]) {
        [odd setParser:parser];
        createPane();
        EXPECT_EQ([pane hostStringForKey:@"TONER.TITLE"], nil) << text(parser);
        EXPECT_EQ(text([field<NSTextField *>(pane, "productTitle") stringValue]), "") << text(parser);
    }
}

TEST_F(PaneLifecycle, AVendorNameOfAnotherTypeCountsAsAbsent) {
    [[observer strings] setObject:@"[__MFG__]" forKey:@"TONER.TITLE"];
    for (id wrong in @[ @7, @[ @"Quorvel" ], @{} ]) {
        [model setObject:wrong forKey:@"VendorName"];
        createPane();
        EXPECT_EQ(text([field<NSTextField *>(pane, "productTitle") stringValue]), "[]") << text(wrong);
    }
}

TEST_F(PaneLifecycle, TheHostsParserGivesTheHostsStrings) {
    [[observer strings] setObject:@"All done" forKey:@"FINISH.TITLE"];
    createIdlePane();
    EXPECT_EQ([pane langParser], observer);
    EXPECT_EQ(text([pane hostStringForKey:@"FINISH.TITLE"]), "All done");
    EXPECT_EQ(text([pane hostStringForKey:@"MISSING"]), "");
}

TEST_F(PaneLifecycle, ThePanesOwnButtonStateIsNone) {
    createIdlePane();
    const std::string before = bytesOf(pane);
    for (const BOOL flag : {YES, NO}) {
        [pane setIsButton1Enabled:flag];
        [pane setIsButton2Enabled:flag];
        [pane setIsButton3Enabled:flag];
        [pane setIsButton1Hidden:flag];
        [pane setIsButton2Hidden:flag];
        [pane setIsButton3Hidden:flag];
        [pane awakeFromNib];
    }
    EXPECT_TRUE(bytesOf(pane) == before);
    EXPECT_EQ([[observer calls] count], 0U);
}

TEST_F(PaneLifecycle, QuittingAlwaysNeedsTheSheet) {
    createIdlePane();
    EXPECT_TRUE([pane needToShowQuitSheet]);
    field<BOOL>(pane, "mAuthCancelledOrError") = YES;
    EXPECT_TRUE([pane needToShowQuitSheet]);
}

TEST_F(PaneLifecycle, DestructionGivesUpTheModelRecord) {
    @autoreleasepool {
        createIdlePane();
    }
    const NSUInteger held = [model retainCount];
    [pane release];
    EXPECT_EQ([model retainCount], held - 1);
}

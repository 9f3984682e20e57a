#import "PaneTest.h"

#import "install/chain/VantInstallation+InstallChain.h"
#import "Jail.hpp"
#include <cstdlib>
#include <dlfcn.h>

namespace fs = std::filesystem;

@implementation VantRecordingObserver

- (id)init {
    self = [super init];
    calls = [[NSMutableArray alloc] init];
    strings = [[NSMutableDictionary alloc] init];
    return self;
}

- (void)dealloc {
    [calls release];
    [strings release];
    [super dealloc];
}

- (void)note:(NSString *)call {
    @synchronized(self) {
        [calls addObject:call];
    }
}

- (NSArray *)calls {
    @synchronized(self) {
        return [NSArray arrayWithArray:calls];
    }
}

- (NSUInteger)countOf:(NSString *)call {
    NSUInteger count = 0;
    for (NSString *made in [self calls])
        count += [made isEqualToString:call] ? 1 : 0;
    return count;
}

- (NSMutableDictionary *)strings {
    return strings;
}

- (void)note:(SEL)operation flag:(BOOL)flag {
    [self note:[NSStringFromSelector(operation) stringByAppendingString:flag ? @"YES" : @"NO"]];
}

- (void)setIsButton1Enabled:(BOOL)enabled {
    [self note:_cmd flag:enabled];
}

- (void)setIsButton2Enabled:(BOOL)enabled {
    [self note:_cmd flag:enabled];
}

- (void)setIsButton3Enabled:(BOOL)enabled {
    [self note:_cmd flag:enabled];
}

- (void)setIsButton1Hidden:(BOOL)hidden {
    [self note:_cmd flag:hidden];
}

- (void)setIsButton2Hidden:(BOOL)hidden {
    [self note:_cmd flag:hidden];
}

- (void)setIsButton3Hidden:(BOOL)hidden {
    [self note:_cmd flag:hidden];
}

- (void)continueToNextPlugin {
    [self note:@"continueToNextPlugin"];
}

- (id)getLangParser {
    return self;
}

- (NSString *)getStringByKey:(NSString *)key {
    NSString *answer = [strings objectForKey:key];
    return answer != nil ? answer : @"";
}

@end

@implementation VantNotificationLog

- (id)init {
    self = [super init];
    notifications = [[NSMutableArray alloc] init];
    threads = [[NSMutableArray alloc] init];
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [notifications release];
    [threads release];
    [super dealloc];
}

- (void)watch:(NSString *)name {
    [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(receive:) name:name object:nil];
}

- (void)receive:(NSNotification *)notification {
    @synchronized(self) {
        [notifications addObject:notification];
        [threads addObject:[NSThread currentThread]];
    }
}

- (NSArray *)notifications {
    @synchronized(self) {
        return [NSArray arrayWithArray:notifications];
    }
}

- (NSArray *)threads {
    @synchronized(self) {
        return [NSArray arrayWithArray:threads];
    }
}

- (NSArray *)names {
    NSMutableArray *names = [NSMutableArray array];
    for (NSNotification *notification in [self notifications])
        [names addObject:[notification name]];
    return names;
}

- (NSUInteger)countOf:(NSString *)name {
    NSUInteger count = 0;
    for (NSString *received in [self names])
        count += [received isEqualToString:name] ? 1 : 0;
    return count;
}

@end

namespace vant::test {

fs::path jail() {
    return std::getenv("VANT_TEST_JAIL");
}

fs::path home() {
    return jail() / "home";
}

fs::path media() {
    return jail() / "media";
}

fs::path systemRoot() {
    return jail() / "system";
}

fs::path installRoot() {
    return jail() / "root";
}

fs::path temporary(std::string_view relative) {
    return fs::path([NSTemporaryDirectory() fileSystemRepresentation]) / relative;
}

fs::path hostResource(std::string_view name) {
    return media() / "TestHost.app" / "Resources" / name;
}

fs::path traceLog() {
    return home() / "Library" / "Logs" / "Quorvel VantMain.log";
}

NSString *ns(const fs::path &path) {
    return [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path.c_str() length:path.native().size()];
}

std::string text(id value) {
    const char *bytes = [[value description] UTF8String];
    return bytes == nullptr ? "(nil)" : bytes;
}

static fs::path installerPath() {
    return systemRoot() / "usr" / "sbin" / "installer";
}

void setInstaller(std::string_view shellScript) {
    writeProgram(installerPath(), std::string("#!/bin/sh\n").append(shellScript));
}

void setSuccessfulInstaller() {
    setInstaller("echo 'installer: Package name is Sample'\n"
                 "echo 'installer:%12.500000'\n"
                 "echo 'installer:%97.750000'\n"
                 "echo 'installer:%100.000000'\n"
                 "echo 'installer: The install was successful.'\n");
}

void removeInstaller() {
    fs::remove(installerPath());
}

void setHostString(NSString *key, NSString *value) {
    const fs::path table = hostResource("English.lproj/Localizable.strings");
    NSString *line = [NSString stringWithFormat:@"\"%@\" = \"%@\";\n", key, value];
    writeFile(table, contentsOf(table) + [line UTF8String]);
}

NSDictionary *entry(NSString *kind, NSString *location) {
    return @{@"TYPE" : @{@"text" : kind}, @"LOCATION" : @{@"text" : location}};
}

static void writePropertyList(id propertyList, std::string_view relative) {
    const fs::path path = temporary(relative);
    fs::create_directories(path.parent_path());
    NSData *bytes = [NSPropertyListSerialization dataWithPropertyList:propertyList
                                                               format:NSPropertyListXMLFormat_v1_0
                                                              options:0
                                                                error:nullptr];
    ASSERT_TRUE([bytes writeToFile:ns(path) atomically:YES]) << path;
}

void writeSettings(id propertyList) {
    writePropertyList(propertyList, "Vantrel/VantUserSettings.plist");
}

void writeMediaSelection(id propertyList) {
    writePropertyList(propertyList, "Vantrel/CD/SelectedInput.plist");
}

void writeWebSelection(id propertyList) {
    writePropertyList(propertyList, "Vantrel/SelectedInput.plist");
}

bool waitUntil(const std::function<bool()> &condition, double seconds) {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    while (!condition()) {
        if ([end timeIntervalSinceNow] < 0)
            return false;
        @autoreleasepool {
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
        }
    }
    return true;
}

static NSBundle *paneBundle() {
    static NSBundle *const bundle = [[NSBundle bundleWithPath:@VANT_TEST_BUNDLE] retain];
    return bundle;
}

Class paneClass() {
    return [paneBundle() principalClass];
}

Class bundleClass(NSString *name) {
    [paneBundle() load];
    return NSClassFromString(name);
}

int &processCounter(const char *name) {
    [paneBundle() load];
    void *image = dlopen([[paneBundle() executablePath] fileSystemRepresentation], RTLD_LAZY | RTLD_NOLOAD);
    int *counter = image == nullptr ? nullptr : static_cast<int *>(dlsym(image, name));
    if (counter == nullptr) {
        ADD_FAILURE() << "the bundle has no counter " << name;
        static int absent = 0;
        return absent;
    }
    return *counter;
}

std::size_t openDescriptors() {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

NSEvent *mouseEvent(NSEventType type) {
    return [NSEvent mouseEventWithType:type
                              location:NSMakePoint(1, 1)
                         modifierFlags:0
                             timestamp:0
                          windowNumber:0
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:0];
}

PaneTest::PaneTest() : pool_([[NSAutoreleasePool alloc] init]) {
    observer = [[VantRecordingObserver alloc] init];
    log = [[VantNotificationLog alloc] init];
    model = [[NSMutableDictionary alloc] init];
    [model setObject:observer forKey:@"Model Observer"];
    [model setObject:@"Quorvel" forKey:@"VendorName"];
}

// The pane, the observer and the record outlive the test: destruction does not stop what a pane has started.
PaneTest::~PaneTest() {
    [log release];
    [pool_ release];
}

VantInstallation *PaneTest::createPane() {
    return createPane(model);
}

VantInstallation *PaneTest::createPane(NSDictionary *record) {
    pane = [[paneClass() alloc] initWithModel:record];
    return pane;
}

VantInstallation *PaneTest::createIdlePane() {
    createPane(nil);
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    field<id>(pane, "mObserver") = observer;
    field<NSDictionary *>(pane, "modelInfo") = [model retain];
    field<BOOL>(pane, "VantInstallationDebugFlag") = YES;
    field<NSString *>(pane, "mUserOptionsFilePath5") = [ns(temporary("Vantrel/VantUserSettings.plist")) retain];
    field<id>(pane, "mInstalledPackageDict") = [[NSMutableDictionary alloc] init];
    field<id>(pane, "mInstallCompArrayForSmartUpdate") = [[NSMutableArray alloc] init];
    field<id>(pane, "mInstallCompArrayForCDUpdate") = [[NSMutableArray alloc] init];
    return pane;
}

} // namespace vant::test

#pragma once
#import "download/BDObject.h"
#import "shell/VantInstallation.h"
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <objc/runtime.h>
#include <string>
#include <string_view>
#include <vector>

/// A host's observer and language parser in one: its strings are a dial, its calls a logbook.
@interface VantRecordingObserver : NSObject {
    NSMutableArray *calls;
    NSMutableDictionary *strings;
    NSMutableArray *threads;
}
/// Each call as text, in order: "setIsButton2Enabled:NO", "continueToNextPlugin". Safe to read on any thread.
- (NSArray *)calls;
/// How often a call was made.
- (NSUInteger)countOf:(NSString *)call;
/// Answers of `getStringByKey:`; a missing key answers the empty string.
- (NSMutableDictionary *)strings;
@end

/// Records the notifications of the names that it is given, with object, user information and thread.
@interface VantNotificationLog : NSObject {
    NSMutableArray *notifications;
    NSMutableArray *threads;
}
/// Starts recording a name.
- (void)watch:(NSString *)name;
/// Names in order of arrival.
- (NSArray *)names;
- (NSArray *)notifications;
/// The threads that the notifications were posted on, in the same order.
- (NSArray *)threads;
- (NSUInteger)countOf:(NSString *)name;
@end

namespace vant::test {

/// The folders of this test process: its own home, temporary folder, media root, system root and install root. The
/// process's main bundle is `media/TestHost.app`.
[[nodiscard]] std::filesystem::path home();
[[nodiscard]] std::filesystem::path media();
[[nodiscard]] std::filesystem::path systemRoot();
[[nodiscard]] std::filesystem::path installRoot();
[[nodiscard]] std::filesystem::path jail();
/// A path below the process's temporary folder, such as "Vantrel/Download".
[[nodiscard]] std::filesystem::path temporary(std::string_view relative = "");
/// A resource of the host application, such as "Uninstaller.pkg".
[[nodiscard]] std::filesystem::path hostResource(std::string_view name);
/// The trace log.
[[nodiscard]] std::filesystem::path traceLog();

[[nodiscard]] NSString *ns(const std::filesystem::path &path);
[[nodiscard]] std::string text(id value);

/// Makes the privileged package installer a shell script; it is called as installer -verboseR -pkg PATH -target /.
void setInstaller(std::string_view shellScript);
/// An installer that prints a short successful run.
void setSuccessfulInstaller();
/// An installer that cannot be found.
void removeInstaller();

/// Sets the host's word for a key of its default string table ("Language Setting"). Before the first look-up.
void setHostString(NSString *key, NSString *value);

/// One element of a selection file.
[[nodiscard]] NSDictionary *entry(NSString *kind, NSString *location);
void writeSettings(id propertyList);
void writeMediaSelection(id propertyList);
void writeWebSelection(id propertyList);

/// Runs the main run loop until the condition holds; false when it did not within the time.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition, double seconds = 10.0);

/// The pane's class, from the loaded bundle.
[[nodiscard]] Class paneClass();
/// A class of the bundle by name.
[[nodiscard]] Class bundleClass(NSString *name);
/// The process-wide counter of that name in the loaded bundle: "cdInstallIndex", "cdDownloadIndex".
[[nodiscard]] int &processCounter(const char *name);

/// A field by its name, as it lies in the object.
template<class T>
T &field(id object, const char *name) {
    Ivar variable = class_getInstanceVariable(object_getClass(object), name);
    EXPECT_NE(variable, nullptr) << name;
    return *reinterpret_cast<T *>(reinterpret_cast<char *>(object) + ivar_getOffset(variable));
}

/// Number of open descriptors of this process.
[[nodiscard]] std::size_t openDescriptors();

/// A press or release of a mouse button, in no window: for the application's queue of events.
[[nodiscard]] NSEvent *mouseEvent(NSEventType type);

/// A pane in a host of the test's own. The host record holds "Model Observer" (the recording observer) and
/// "VendorName".
class PaneTest : public testing::Test {
protected:
    PaneTest();
    ~PaneTest() override;

    /// Creates the pane with the host's record, as the host would.
    VantInstallation *createPane();
    /// Creates the pane with any record.
    VantInstallation *createPane(NSDictionary *record);
    /// A pane whose interface is loaded and whose lists exist, with tracing on, and no flow started: for calling one
    /// operation at a time.
    VantInstallation *createIdlePane();

    VantRecordingObserver *observer;
    VantNotificationLog *log;
    NSMutableDictionary *model;
    VantInstallation *pane = nil;

private:
    NSAutoreleasePool *pool_;
};

} // namespace vant::test

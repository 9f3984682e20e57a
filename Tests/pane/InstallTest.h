#pragma once
#include "PaneTest.h"

#import "RecordingControls.h"

namespace vant::test {

/// A pane that may install: rights granted, controls of the test's own, tracing on, nothing started.
class InstallTest : public PaneTest {
protected:
    InstallTest();

    /// Appends a record to the media or the web list and returns it.
    NSDictionary *addMedia(NSString *kind, NSString *location);
    NSDictionary *addWeb(NSString *componentName, NSString *installerPath);

    /// Appends a number of media records, "Package 0.pkg" and on.
    void addMediaPackages(int count);

    /// Installs one record on a thread of its own and waits until it has ended, by the announcement of one of the five
    /// notifications; false when it has not within the time.
    [[nodiscard]] bool installMedia(NSDictionary *record, double seconds = 20.0);
    [[nodiscard]] bool installWeb(NSDictionary *record, double seconds = 20.0);

    /// Waits until a progress line of the running package has moved the bar, which tells the main thread that
    /// everything before that line is done on the installer thread; false when none does.
    [[nodiscard]] bool readsProgress();

    /// Lets the pane answer next-package notifications, as the views do.
    void followTheChain();

    /// The outcome word of a package file name, empty without one.
    [[nodiscard]] std::string outcome(NSString *fileName) const;
    [[nodiscard]] std::string statusText() const;
    [[nodiscard]] double barValue() const;
    [[nodiscard]] std::string trace() const;
    /// How often the text stands in the trace log.
    [[nodiscard]] int tracedCount(std::string_view text) const;

    NSMutableArray *mediaList;
    NSMutableArray *webList;
    NSMutableDictionary *outcomes;
    VantRecordingBar *bar;
    VantRecordingBar *dummyBar;
    VantRecordingBar *downloadBar;
    VantRecordingField *statusLine;
    std::filesystem::path scratch; ///< an empty folder for the test's own files

private:
    bool run(SEL operation, NSDictionary *record, double seconds);
};

} // namespace vant::test

#pragma once
#import "download/VantInstallation+Downloads.h"
#import "InstallTest.h"

/// A response that announces the length it was given.
@interface VantAnnouncedResponse : NSObject {
    long long length;
}
+ (NSURLResponse *)ofLength:(long long)length;
- (long long)expectedContentLength;
@end

namespace vant::test {

/// An error of the platform's URL domain.
[[nodiscard]] NSError *urlError(int code);

/// A download object for a delegate's messages: one that nobody runs, with the reference that the delegate gives up.
[[nodiscard]] NSURLDownload *idleDownload();

/// A pane in the middle of the web flow: a web selection, its bookkeeping lists and the web view's handlers, but no
/// download started.
class WebTest : public InstallTest {
protected:
    WebTest();

    /// Makes the web selection this many entries long.
    void select(int count);

    /// Has each of the pane's calls of an operation counted instead of carried out.
    void countInstead(SEL operation);
    [[nodiscard]] static int counted();

    /// An expanded folder of this name under the download folder, with an empty file at each of the items.
    std::filesystem::path expandedFolder(std::string_view name, const std::vector<std::string> &items);

    /// Tells the pane that a folder has been expanded.
    void postExpanded(const std::filesystem::path &folder);

    /// "installerpath" of the web list, in its order; "-" for an absent one.
    [[nodiscard]] std::vector<std::string> listedPaths() const;
    /// "componentname" of the web list, in its order; "-" for an absent one.
    [[nodiscard]] std::vector<std::string> listedNames() const;

    static std::filesystem::path downloads();
    static std::filesystem::path desktop();

private:
    [[nodiscard]] std::vector<std::string> listed(NSString *key) const;
};

} // namespace vant::test

#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant {

/// Puts the ends of downloads that run at the same time into the order in which their files were created, because one
/// finish is answered by expanding one file, in that order: told at once, a quick download would have a slow one's file
/// expanded before it is whole.
///
/// A download is known from its start to its announcement or failure. Values in, values out: no clock, no platform.
class FinishOrder {
public:
    /// Any value that tells the running downloads apart.
    using Download = const void *;

    /// A download that will write to this path has been started, or started again.
    void started(Download download, std::string_view path);
    /// It has created its file.
    void created(Download download);
    /// It has finished. False for a download without a file, which nothing has to wait for.
    [[nodiscard]] bool finished(Download download);
    /// It has failed: what waited for it waits no longer. Its file keeps its place among those to expand.
    void failed(Download download);

    /// The download whose finish may be announced now, taken off the order; call until there is none. `nextPath` is the
    /// file that the announcement would have expanded: one that another download is writing anew has to wait for that.
    [[nodiscard]] std::optional<Download> next(std::string_view nextPath);

private:
    enum class State { Started, Created, Finished };
    struct Entry {
        Download download;
        std::string path;
        State state;
    };
    [[nodiscard]] std::vector<Entry>::iterator find(Download download);

    std::vector<Entry> entries_; ///< in order of creation; those without a file are not ahead of anyone
};

} // namespace vant

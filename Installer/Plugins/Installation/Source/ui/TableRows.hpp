#pragma once
#include <cstddef>
#include <deque>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vant {

/// What a row of the component table says about its component.
enum class RowState { Waiting, AtWork, Arrived, Done, NotDone, NotNeeded };

/// What is known of one row's component.
struct RowFacts {
    bool downloading = false; ///< its file was created and neither arrived nor failed since
    bool arrived = false;     ///< its archive was whole
    bool lost = false;        ///< its download failed, or what arrived was no archive
    bool found = false;       ///< packages to install were found in its archive
    bool superseded = false;  ///< the run leaves all of them out for newer ones, or for the same from another archive
    std::size_t packages = 0; ///< how many packages of the run are its own
    std::size_t installed = 0;
    std::size_t failed = 0;
};

/// The state of a row, by its facts, whether the run is at work on it, and whether the run is over.
[[nodiscard]] RowState rowState(const RowFacts &row, bool atWork, bool over) noexcept;

/// Name of the first folder or file below a folder on the way to a path; empty when the path does not lie below it. A
/// view into the path.
[[nodiscard]] std::string_view nameBelow(std::string_view path, std::string_view folder) noexcept;

/// One package of a run that has ended, and where the run goes from there.
struct PackageEnd {
    std::string key;
    bool installed = false;
    std::optional<std::string> next; ///< key of the package that follows; nothing after the last
};

/// The key of a package that comes out of no row's archive: its component's kind. Unlike the key of every archive.
[[nodiscard]] std::string keyOfKind(std::string_view kind);

/// What the component table knows of its rows. A row has a key, which its download and its packages share: the location
/// of a package on the media, the folder name of an archive from the web. Rows of one key fare alike; what has a key
/// that no row has (the uninstaller), or none at all, belongs to no row. When an archive brings no package, the media's
/// packages of that kind are installed in its place, and count for its row. Each event costs the same however many rows
/// there are, but for the start and the end of a run.
class TableRows {
public:
    /// Keys by row, and the keys of the rows' kinds for rows that packages of the media may stand in for.
    explicit TableRows(const std::vector<std::string> &keys = {}, const std::vector<std::string> &kinds = {});

    [[nodiscard]] std::size_t size() const noexcept { return rows_.size(); }
    [[nodiscard]] RowState state(std::size_t row) const;
    /// The one row that the run is at work on: of the downloads under way the one whose file was created first, else,
    /// once files are being created at all, the first row that still waits for its own; or the row of the package being
    /// installed.
    [[nodiscard]] std::optional<std::size_t> active() const;

    /// A download's file was created, for the first time or by a retry.
    void fileCreated(const std::string &key);
    /// An archive was handed to expansion; it was whole when anything came out of it.
    void archiveExpanded(const std::string &key, bool whole);
    /// Packages to install were found in an archive.
    void packagesFound(const std::string &key);
    void downloadFailed(const std::string &key);
    /// The run begins to install packages of these keys, with the one at the position.
    void installationStarted(const std::vector<std::string> &packages, std::size_t first);
    void packageEnded(const PackageEnd &end);
    /// Nothing more will be installed: all is done, or the run has stopped.
    void runEnded();

    /// The rows whose state is another than when this was last asked, in order.
    [[nodiscard]] std::vector<std::size_t> takeChanges();

private:
    [[nodiscard]] std::optional<std::size_t> activeDownload() const;
    [[nodiscard]] std::span<const std::size_t> rowsOf(const std::string &key) const;
    [[nodiscard]] std::vector<std::size_t> rowsOfPackage(const std::string &key) const;
    void touch(const std::string &key);
    void touchActive();
    void touchAll();
    void goOnWith(std::optional<std::string> package);
    void endDownload(std::size_t row);

    std::vector<RowFacts> rows_;
    std::unordered_map<std::string, std::vector<std::size_t>> rowsOfKey_;
    std::unordered_map<std::string, std::vector<std::size_t>> rowsOfKind_;
    std::deque<std::size_t> downloads_; // rows in the order in which their files were created
    std::set<std::size_t> awaited_;     // rows whose file is still to come
    bool downloading_ = false;
    std::optional<std::string> package_;
    bool installing_ = false;
    bool over_ = false;
    std::vector<RowState> shown_;
    std::vector<std::size_t> touched_;
};

} // namespace vant

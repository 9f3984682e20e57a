#include "ui/TableRows.hpp"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace vant {

RowState rowState(const RowFacts &row, bool atWork, bool over) noexcept {
    // A package that was not counted beforehand counts all the same once it has ended.
    if (row.installed > 0 && row.failed == 0 && row.installed >= row.packages)
        return RowState::Done;
    if (row.superseded)
        return RowState::NotNeeded;
    if (over)
        return RowState::NotDone;
    if (atWork)
        return RowState::AtWork;
    if (row.lost || row.failed > 0)
        return RowState::NotDone;
    return row.arrived ? RowState::Arrived : RowState::Waiting;
}

std::string_view nameBelow(std::string_view path, std::string_view folder) noexcept {
    while (folder.ends_with('/'))
        folder.remove_suffix(1);
    if (!path.starts_with(folder) || !path.substr(folder.size()).starts_with('/'))
        return {};
    path.remove_prefix(std::min(path.find_first_not_of('/', folder.size()), path.size()));
    return path.substr(0, path.find('/'));
}

std::string keyOfKind(std::string_view kind) {
    return "/" + std::string(kind);
}

TableRows::TableRows(const std::vector<std::string> &keys, const std::vector<std::string> &kinds)
    : rows_(keys.size()), shown_(keys.size()) {
    for (std::size_t row = 0; row < keys.size(); ++row)
        if (!keys[row].empty()) {
            rowsOfKey_[keys[row]].push_back(row);
            awaited_.insert(row);
        }
    for (std::size_t row = 0; row < std::min(keys.size(), kinds.size()); ++row)
        rowsOfKind_[kinds[row]].push_back(row);
}

RowState TableRows::state(std::size_t row) const {
    return row < rows_.size() ? rowState(rows_[row], active() == row, over_) : RowState::Waiting;
}

std::optional<std::size_t> TableRows::active() const {
    if (over_)
        return std::nullopt;
    if (!installing_)
        return activeDownload();
    const auto rows = package_ ? rowsOfPackage(*package_) : std::vector<std::size_t>();
    return rows.empty() ? std::nullopt : std::optional(rows.front());
}

std::optional<std::size_t> TableRows::activeDownload() const {
    if (!downloads_.empty())
        return downloads_.front();
    return downloading_ && !awaited_.empty() ? std::optional(*awaited_.begin()) : std::nullopt;
}

std::span<const std::size_t> TableRows::rowsOf(const std::string &key) const {
    const auto found = rowsOfKey_.find(key);
    return found == rowsOfKey_.end() ? std::span<const std::size_t>() : std::span(found->second);
}

std::vector<std::size_t> TableRows::rowsOfPackage(const std::string &key) const {
    const auto own = rowsOf(key);
    std::vector<std::size_t> rows(own.begin(), own.end());
    if (const auto kind = rowsOfKind_.find(key); rows.empty() && kind != rowsOfKind_.end())
        std::ranges::copy_if(kind->second, std::back_inserter(rows), [this](auto row) { return !rows_[row].found; });
    return rows;
}

void TableRows::fileCreated(const std::string &key) {
    touchActive();
    touch(key);
    downloading_ = downloading_ || !rowsOf(key).empty();
    for (const std::size_t row : rowsOf(key)) {
        awaited_.erase(row);
        if (!std::exchange(rows_[row].downloading, true))
            downloads_.push_back(row);
        rows_[row].lost = false;
    }
    touchActive();
}

void TableRows::archiveExpanded(const std::string &key, bool whole) {
    touchActive();
    touch(key);
    for (const std::size_t row : rowsOf(key)) {
        rows_[row].arrived = whole;
        rows_[row].lost = !whole;
        endDownload(row);
    }
    touchActive();
}

void TableRows::packagesFound(const std::string &key) {
    for (const std::size_t row : rowsOf(key))
        rows_[row].found = true;
}

void TableRows::downloadFailed(const std::string &key) {
    touchActive();
    touch(key);
    for (const std::size_t row : rowsOf(key)) {
        rows_[row].lost = !rows_[row].arrived;
        endDownload(row);
    }
    touchActive();
}

void TableRows::endDownload(std::size_t row) {
    awaited_.erase(row);
    rows_[row].downloading = false;
    while (!downloads_.empty() && !rows_[downloads_.front()].downloading)
        downloads_.pop_front();
}

void TableRows::installationStarted(const std::vector<std::string> &packages, std::size_t first) {
    for (RowFacts &row : rows_)
        row.packages = row.installed = row.failed = 0;
    for (const std::string &key : packages)
        for (const std::size_t row : rowsOfPackage(key)) {
            ++rows_[row].packages;
            rows_[row].lost = false; // what was lost has another in its place
        }
    for (RowFacts &row : rows_)
        row.superseded = row.found && row.packages == 0;
    touchAll();
    goOnWith(first < packages.size() ? std::optional(packages[first]) : std::nullopt);
}

void TableRows::packageEnded(const PackageEnd &end) {
    for (const std::size_t row : rowsOfPackage(end.key)) {
        touched_.push_back(row);
        ++(end.installed ? rows_[row].installed : rows_[row].failed);
    }
    goOnWith(end.next);
}

void TableRows::goOnWith(std::optional<std::string> package) {
    touchActive();
    installing_ = true;
    package_ = std::move(package);
    touchActive();
}

void TableRows::runEnded() {
    over_ = true;
    touchAll();
}

void TableRows::touch(const std::string &key) {
    const auto rows = rowsOf(key);
    touched_.insert(touched_.end(), rows.begin(), rows.end());
}

void TableRows::touchActive() {
    if (const auto row = active())
        touched_.push_back(*row);
}

void TableRows::touchAll() {
    touched_.resize(rows_.size());
    std::iota(touched_.begin(), touched_.end(), std::size_t{0});
}

std::vector<std::size_t> TableRows::takeChanges() {
    std::sort(touched_.begin(), touched_.end());
    touched_.erase(std::unique(touched_.begin(), touched_.end()), touched_.end());
    std::vector<std::size_t> changes = std::exchange(touched_, {});
    std::erase_if(changes, [this](std::size_t row) {
        const RowState now = state(row);
        return std::exchange(shown_[row], now) == now;
    });
    return changes;
}

} // namespace vant

#include "download/FinishOrder.hpp"

#include <algorithm>

namespace vant {

std::vector<FinishOrder::Entry>::iterator FinishOrder::find(Download download) {
    return std::find_if(entries_.begin(), entries_.end(),
                        [download](const Entry &entry) { return entry.download == download; });
}

void FinishOrder::started(Download download, std::string_view path) {
    entries_.push_back({download, std::string(path), State::Started});
}

void FinishOrder::created(Download download) {
    const auto entry = find(download);
    if (entry == entries_.end() || entry->state != State::Started)
        return;
    entry->state = State::Created;
    // Behind all others, so that those with a file stand in the order of their files.
    std::rotate(entry, entry + 1, entries_.end());
}

bool FinishOrder::finished(Download download) {
    const auto entry = find(download);
    if (entry == entries_.end())
        return false;
    if (entry->state == State::Started) {
        entries_.erase(entry);
        return false;
    }
    entry->state = State::Finished;
    return true;
}

void FinishOrder::failed(Download download) {
    if (const auto entry = find(download); entry != entries_.end())
        entries_.erase(entry);
}

std::optional<FinishOrder::Download> FinishOrder::next(std::string_view nextPath) {
    const auto first = std::find_if(entries_.begin(), entries_.end(),
                                    [](const Entry &entry) { return entry.state != State::Started; });
    if (first == entries_.end() || first->state != State::Finished)
        return std::nullopt;
    const bool isRewritten = std::any_of(entries_.begin(), entries_.end(), [nextPath](const Entry &entry) {
        return entry.state != State::Finished && entry.path == nextPath;
    });
    if (isRewritten)
        return std::nullopt;
    const Download download = first->download;
    entries_.erase(first);
    return download;
}

} // namespace vant

#include "check/Names.hpp"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace vant::media {
namespace {

std::string letters(std::string_view word) {
    std::string bare;
    for (const char c : word) {
        if (c >= 'A' && c <= 'Z')
            bare += static_cast<char>(c - 'A' + 'a');
        else if (c != ' ' && c != '_' && c != '-' && c != '.')
            bare += c;
    }
    return bare;
}

/// How many letters have to be put in, taken out or replaced to make one of the other.
std::size_t distance(std::string_view first, std::string_view second) {
    std::vector<std::size_t> row(second.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < first.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t k = 0; k < second.size(); ++k) {
            const std::size_t replaced = diagonal + (first[i] == second[k] ? 0 : 1);
            diagonal = row[k + 1];
            row[k + 1] = std::min({replaced, diagonal + 1, row[k] + 1});
        }
    }
    return row.back();
}

} // namespace

std::optional<std::string> probablyMeant(std::string_view word, std::span<const std::string> known) {
    constexpr std::size_t longest = 64;
    constexpr std::size_t farthest = 2;
    const std::string bare = letters(word);
    if (bare.size() > longest)
        return std::nullopt;
    std::optional<std::string> nearest;
    std::size_t least = std::min(farthest, bare.size() / 3) + 1;
    for (const std::string &candidate : known) {
        const std::size_t away = distance(bare, letters(candidate));
        if (away < least) {
            least = away;
            nearest = candidate;
        }
    }
    return nearest;
}

bool isReadOtherwiseByShell(std::string_view text) noexcept {
    return text.find_first_of("\"$`\\\n") != std::string_view::npos;
}

} // namespace vant::media

#pragma once
#include <optional>

namespace vant {

/// What one press of a slide control, or one tick of the slide timer, leads to.
struct SlideChange {
    /// The page asked for: 0 or 1, or one that does not exist: -1 for Back on page 0, 2 for Next on page 1.
    int page = 0;
    /// Whether the page indicator is to be set to the page; not when the user has just set it.
    bool selects = false;
    /// Whether the timer stops, for good.
    bool stopsTimer = false;
    /// Whether anything is to be redrawn, and the page to be remembered.
    bool turns = false;
    bool operator==(const SlideChange &) const = default;
};

/// Decides a change of page from the sender's tag (nothing for the timer; 0 page indicator, 1 Back, 2 Next), the page
/// indicator's selected column (-1 for none) and the page now shown.
[[nodiscard]] SlideChange slideChange(std::optional<int> senderTag, int selectedColumn, int shownPage) noexcept;

} // namespace vant

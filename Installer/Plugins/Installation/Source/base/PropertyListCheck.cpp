#include "base/PropertyListCheck.hpp"

#include <algorithm>
#include <string>

namespace vant {

namespace {

constexpr std::string_view blanks = " \t\r\n";

enum class Tag { opening, closing, neither };

struct Markup {
    Tag tag;
    std::size_t length; ///< how much of the text it takes up; no more than that is known to be markup
};

/// Where the terminator ends, or the whole text without one.
std::size_t endBehind(std::string_view text, std::string_view terminator, std::size_t from) noexcept {
    const std::size_t at = text.find(terminator, from);
    return at == std::string_view::npos ? text.size() : at + terminator.size();
}

/// No tag of a property list is longer. The bound keeps a text of unfinished tags from being read to its end once for
/// each of them.
constexpr std::size_t longestTag = 256;

/// Where the tag's ">" stands, which inside quotes is an ordinary character; the text's size without one.
std::size_t endOfTag(std::string_view text) noexcept {
    char quote = '\0';
    for (std::size_t i = 1; i < std::min(text.size(), longestTag); ++i) {
        const char c = text[i];
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '>')
            return i;
    }
    return text.size();
}

/// The markup that begins with the "<" at the head of the text.
Markup readMarkup(std::string_view text) noexcept {
    if (text.starts_with("<!--"))
        return {Tag::neither, endBehind(text, "-->", 4)};
    if (text.starts_with("<![CDATA["))
        return {Tag::neither, endBehind(text, "]]>", 9)};
    if (text.starts_with("<?"))
        return {Tag::neither, endBehind(text, "?>", 2)};
    if (text.starts_with("<!"))
        return {Tag::neither, 2};
    if (text.starts_with("</"))
        return {Tag::closing, 2};
    const std::size_t end = endOfTag(text);
    // An unfinished tag, or one that is too long, takes up its "<" alone, so that a stray quote hides nothing that
    // follows it.
    if (end == text.size())
        return {Tag::opening, 1};
    return {text[end - 1] == '/' ? Tag::neither : Tag::opening, end + 1};
}

/// Counts how deep it goes; closing more than was opened is not held against what follows.
class Nesting {
public:
    void open() noexcept { deepest_ = std::max(deepest_, ++depth_); }
    void close() noexcept { depth_ -= depth_ > 0 ? 1 : 0; }
    [[nodiscard]] std::size_t deepest() const noexcept { return deepest_; }

private:
    std::size_t depth_ = 0;
    std::size_t deepest_ = 0;
};

/// Where the quoted string that begins at the head of the text ends.
std::size_t quotedLength(std::string_view text) noexcept {
    std::size_t i = 1;
    while (i < text.size() && text[i] != '"')
        i += text[i] == '\\' ? 2 : 1;
    return std::min(i + 1, text.size());
}

/// The length of the comment at a position, 0 when there is none. "//" begins a comment only behind a blank: an
/// unquoted path may hold it.
std::size_t commentLength(std::string_view text, std::size_t at) noexcept {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("/*"))
        return endBehind(rest, "*/", 2);
    const bool behindBlank = at == 0 || blanks.find(text[at - 1]) != std::string_view::npos;
    return behindBlank && rest.starts_with("//") ? endBehind(rest, "\n", 2) : 0;
}

bool isMarkup(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(blanks);
    const std::string_view head = first == std::string_view::npos ? std::string_view() : text.substr(first);
    return head.starts_with("<?") || head.starts_with("<!") || head.starts_with("<plist");
}

/// The text without a byte order mark and without NUL bytes, which leaves of two-byte encodings what matters here.
std::string narrowed(std::string_view bytes) {
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
        if (bytes.starts_with(mark))
            bytes.remove_prefix(mark.size());
    std::string text(bytes);
    std::erase(text, '\0');
    return text;
}

} // namespace

std::size_t markupNesting(std::string_view text) noexcept {
    Nesting nesting;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
        const Markup markup = readMarkup(text.substr(at));
        if (markup.tag == Tag::opening)
            nesting.open();
        else if (markup.tag == Tag::closing)
            nesting.close();
        at += markup.length;
    }
    return nesting.deepest();
}

std::size_t bracketNesting(std::string_view text) noexcept {
    Nesting nesting;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == '(' || c == '{')
            nesting.open();
        else if (c == ')' || c == '}')
            nesting.close();
        const std::size_t comment = c == '/' ? commentLength(text, at) : 0;
        at += c == '"' ? quotedLength(text.substr(at)) : std::max<std::size_t>(comment, 1);
    }
    return nesting.deepest();
}

bool isPropertyListSafeToParse(std::string_view bytes) {
    if (bytes.starts_with("bplist"))
        return isBinaryPropertyListSound(bytes);
    // One platform takes a first byte of 0 or 1 for a serialisation of its own, whose reader trusts what it reads.
    if (bytes.empty() || bytes.front() == '\0' || bytes.front() == '\1')
        return false;
    const std::string text = narrowed(bytes);
    return (isMarkup(text) ? markupNesting(text) : bracketNesting(text)) <= deepestPropertyList;
}

} // namespace vant

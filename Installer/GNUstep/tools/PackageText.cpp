#include "PackageText.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vant {

namespace {

constexpr std::string_view blanks = " \t\r\n";

struct Entity {
    std::string_view name;
    char character;
};

constexpr std::array entities{
    Entity{"amp", '&'}, Entity{"lt", '<'}, Entity{"gt", '>'}, Entity{"quot", '"'}, Entity{"apos", '\''},
};

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string decoded(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const auto mark = text.find('&');
        plain += text.substr(0, mark);
        if (mark == std::string_view::npos)
            break;
        text.remove_prefix(mark + 1);
        const auto known = std::ranges::find_if(entities, [&](const Entity &entity) {
            return text.starts_with(entity.name) && text.substr(entity.name.size()).starts_with(';');
        });
        plain += known == entities.end() ? '&' : known->character;
        text.remove_prefix(known == entities.end() ? 0 : known->name.size() + 1);
    }
    return plain;
}

std::string withoutComments(std::string_view xml) {
    std::string bare;
    for (auto start = xml.find("<!--"); start != std::string_view::npos; start = xml.find("<!--")) {
        bare += xml.substr(0, start);
        const auto end = xml.find("-->", start);
        xml.remove_prefix(end == std::string_view::npos ? xml.size() : end + 3);
    }
    return bare.append(xml);
}

struct Tag {
    std::string_view attributes; ///< between the element's name and its ">"
    std::string_view rest;       ///< behind the ">"
};

/// The next opening tag of the element.
std::optional<Tag> nextTag(std::string_view xml, std::string_view element) {
    for (auto at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
        auto after = xml.substr(at + 1);
        if (!after.starts_with(element))
            continue;
        after.remove_prefix(element.size());
        const auto end = after.find('>');
        if (end == std::string_view::npos)
            return std::nullopt;
        if (end == 0 || after.front() == '/' || blanks.find(after.front()) != std::string_view::npos)
            return Tag{after.substr(0, end), after.substr(end + 1)};
    }
    return std::nullopt;
}

std::string percentDecoded(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const auto digits = text.substr(i + 1 <= text.size() ? i + 1 : i, 2);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (text[i] == '%' && digits.size() == 2 && read.ptr == digits.data() + 2) {
            plain += static_cast<char>(byte);
            i += 2;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

} // namespace

std::optional<std::string> attributeIn(std::string_view xml, std::string_view element, std::string_view attribute) {
    const auto bare = withoutComments(xml);
    const auto tag = nextTag(bare, element);
    if (!tag)
        return std::nullopt;
    auto rest = tag->attributes;
    for (auto equals = rest.find('='); equals != std::string_view::npos; equals = rest.find('=')) {
        const auto name = trimmed(rest.substr(0, equals));
        rest = rest.substr(equals + 1);
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
        if (rest.empty() || (rest.front() != '"' && rest.front() != '\''))
            return std::nullopt;
        const auto end = rest.find(rest.front(), 1);
        if (end == std::string_view::npos)
            return std::nullopt;
        if (name == attribute)
            return decoded(rest.substr(1, end - 1));
        rest.remove_prefix(end + 1);
    }
    return std::nullopt;
}

std::vector<std::string> textsIn(std::string_view xml, std::string_view element) {
    std::vector<std::string> texts;
    const auto bare = withoutComments(xml);
    for (auto tag = nextTag(bare, element); tag; tag = nextTag(tag->rest, element)) {
        const auto text = tag->attributes.ends_with('/') ? "" : trimmed(tag->rest.substr(0, tag->rest.find('<')));
        if (!text.empty())
            texts.push_back(decoded(text));
    }
    return texts;
}

std::optional<std::string> propertyIn(std::string_view plist, std::string_view key) {
    const auto bare = withoutComments(plist);
    std::string_view rest = bare;
    for (auto tag = nextTag(rest, "key"); tag; tag = nextTag(rest, "key")) {
        rest = tag->rest;
        if (decoded(trimmed(rest.substr(0, rest.find('<')))) != key)
            continue;
        const auto value = nextTag(rest, "string");
        const auto end = rest.find("</key>");
        if (!value || end == std::string_view::npos || !trimmed(rest.substr(end + 6)).starts_with("<string"))
            return std::nullopt;
        return decoded(value->rest.substr(0, value->rest.find('<')));
    }
    return std::nullopt;
}

std::vector<std::string> componentsOf(std::string_view distribution) {
    std::vector<std::string> names;
    for (const auto &text : textsIn(distribution, "pkg-ref")) {
        const auto name = percentDecoded(text.starts_with('#') ? text.substr(1) : text);
        if (std::ranges::find(names, name) == names.end())
            names.push_back(name);
    }
    return names;
}

} // namespace vant

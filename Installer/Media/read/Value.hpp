#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vant::media {

struct Member;

/// A value of a property list, so that its shape can be looked at without a platform.
struct Value {
    enum class Kind { Absent, Text, Array, Dictionary, Other };
    Kind kind = Kind::Absent;
    std::string text;
    std::vector<Value> elements; ///< of an array
    std::vector<Member> members; ///< of a dictionary

    /// The value under a key; an absent one when there is none, or when this is no dictionary.
    [[nodiscard]] const Value &at(std::string_view key) const;
};

struct Member {
    std::string key;
    Value value;
};

/// "a string", "an array" …, for a sentence.
[[nodiscard]] std::string_view kindName(Value::Kind kind) noexcept;

} // namespace vant::media

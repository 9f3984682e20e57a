#include "read/Value.hpp"

#include <algorithm>

namespace vant::media {

const Value &Value::at(std::string_view key) const {
    static const Value absent;
    const auto found = std::ranges::find(members, key, &Member::key);
    return found == members.end() ? absent : found->value;
}

std::string_view kindName(Value::Kind kind) noexcept {
    switch (kind) {
    case Value::Kind::Absent:
        return "nothing";
    case Value::Kind::Text:
        return "a string";
    case Value::Kind::Array:
        return "an array";
    case Value::Kind::Dictionary:
        return "a dictionary";
    case Value::Kind::Other:
        break;
    }
    return "neither string nor array nor dictionary";
}

} // namespace vant::media

#import "base/Bridge.h"

namespace vant {

std::string utf8(NSString *text) {
    NSData *bytes = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    return bytes == nil ? std::string() : std::string(static_cast<const char *>([bytes bytes]), [bytes length]);
}

std::optional<std::string> optionalUTF8(id value) {
    if (![value isKindOfClass:[NSString class]])
        return std::nullopt;
    return utf8(value);
}

NSString *nsString(std::string_view text) {
    NSString *result = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
    if (result == nil)
        result = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSISOLatin1StringEncoding];
    return [result autorelease];
}

NSString *nsStringOrNil(const std::optional<std::string> &text) {
    return text ? nsString(*text) : nil;
}

} // namespace vant

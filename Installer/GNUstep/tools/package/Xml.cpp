#include "GNUstep/tools/package/Xml.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <new>

namespace vant::tools {

namespace {

constexpr std::size_t mostElements = 100'000;
constexpr std::size_t deepest = 100;

/// What the parser's callbacks fill. No exception may pass through the parser's frames, so a refusal stops it.
struct Document {
    XML_Parser parser = nullptr;
    XmlElement top;                       ///< the root's parent
    std::vector<XmlElement *> open{&top}; ///< an element's address holds while its siblings are not added to
    std::size_t count = 0;
    bool isRefused = false;
    bool isOutOfMemory = false;

    template<class Step>
    void guarded(Step step) {
        try {
            step();
        } catch (const std::bad_alloc &) {
            isOutOfMemory = true;
            XML_StopParser(parser, XML_FALSE);
        }
    }
};

void begin(void *context, const XML_Char *name, const XML_Char **attributes) {
    auto &document = *static_cast<Document *>(context);
    document.guarded([&] {
        if (++document.count > mostElements || document.open.size() > deepest) {
            document.isRefused = true;
            XML_StopParser(document.parser, XML_FALSE);
            return;
        }
        auto &element = document.open.back()->children.emplace_back();
        element.name = name;
        for (; *attributes != nullptr; attributes += 2)
            element.attributes.emplace_back(attributes[0], attributes[1]);
        document.open.push_back(&element);
    });
}

void end(void *context, const XML_Char * /*name*/) {
    static_cast<Document *>(context)->open.pop_back();
}

void text(void *context, const XML_Char *characters, int length) {
    auto &document = *static_cast<Document *>(context);
    document.guarded([&] { document.open.back()->text.append(characters, static_cast<std::size_t>(length)); });
}

struct Freed {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

} // namespace

const std::string *XmlElement::attribute(std::string_view wanted) const {
    const auto found = std::ranges::find(attributes, wanted, &std::pair<std::string, std::string>::first);
    return found == attributes.end() ? nullptr : &found->second;
}

const XmlElement *XmlElement::child(std::string_view wanted) const {
    const auto found = std::ranges::find(children, wanted, &XmlElement::name);
    return found == children.end() ? nullptr : &*found;
}

XmlElement parseXml(std::string_view source) {
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, Freed> parser(XML_ParserCreate(nullptr));
    if (!parser)
        throw std::bad_alloc();
    Document document;
    document.parser = parser.get();
    XML_SetUserData(parser.get(), &document);
    XML_SetElementHandler(parser.get(), begin, end);
    XML_SetCharacterDataHandler(parser.get(), text);
    const auto status = XML_Parse(parser.get(), source.data(), static_cast<int>(source.size()), XML_TRUE);
    if (document.isOutOfMemory)
        throw std::bad_alloc();
    if (document.isRefused)
        throw ExpansionError("the package's description is too large or too deep");
    if (status != XML_STATUS_OK)
        throw ExpansionError("the package's description is no well-formed XML: " +
                             std::string(XML_ErrorString(XML_GetErrorCode(parser.get()))) + " in line " +
                             std::to_string(XML_GetCurrentLineNumber(parser.get())));
    return std::move(document.top.children.front());
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace vant::tools

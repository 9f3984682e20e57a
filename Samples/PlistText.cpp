#include "PlistText.hpp"

#include "PackageBuilder.hpp"

namespace vant::samples {

std::string plistString(const std::string &text) {
    return "<string>" + escaped(text) + "</string>";
}

std::string plistArray(const std::vector<std::string> &values) {
    std::string text = "<array>";
    for (const auto &value : values)
        text += "\n" + value;
    return text + "\n</array>";
}

std::string plistDictionary(const std::vector<std::pair<std::string, std::string>> &values) {
    std::string text = "<dict>";
    for (const auto &[key, value] : values)
        text += "\n<key>" + escaped(key) + "</key>\n" + value;
    return text + "\n</dict>";
}

std::string plistDocument(const std::string &root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           root + "\n</plist>\n";
}

std::string selectionDocument(const std::vector<Selected> &selection) {
    const auto text = [](const std::string &value) { return plistDictionary({{"text", plistString(value)}}); };
    std::vector<std::string> elements;
    elements.reserve(selection.size());
    for (const auto &[type, location] : selection)
        elements.push_back(plistDictionary({{"TYPE", text(type)}, {"LOCATION", text(location)}}));
    return plistDocument(plistArray(elements));
}

} // namespace vant::samples

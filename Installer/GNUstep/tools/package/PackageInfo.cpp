#include "GNUstep/tools/package/PackageInfo.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/package/Xml.hpp"

namespace vant::tools {

namespace {

std::string scriptNamed(const XmlElement &scripts, std::string_view name) {
    const auto *script = scripts.child(name);
    const auto *file = script == nullptr ? nullptr : script->attribute("file");
    return file == nullptr ? std::string() : *file;
}

} // namespace

PackageInfo readPackageInfo(std::string_view text) {
    const auto root = parseXml(text);
    if (root.name != "pkg-info")
        throw ExpansionError("the package's \"PackageInfo\" holds something else");
    PackageInfo info;
    if (const auto *location = root.attribute("install-location"); location != nullptr)
        info.installLocation = *location;
    if (const auto *payload = root.child("payload"); payload != nullptr) {
        const auto *files = payload->attribute("numberOfFiles");
        info.hasFiles = files != nullptr && *files != "0";
    }
    if (const auto *scripts = root.child("scripts"); scripts != nullptr) {
        info.preinstall = scriptNamed(*scripts, "preinstall");
        info.postinstall = scriptNamed(*scripts, "postinstall");
    }
    return info;
}

} // namespace vant::tools

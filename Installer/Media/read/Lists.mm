#include "read/Lists.hpp"

#import "base/Bridge.h"
#import "base/PropertyList.h"
#include "base/PropertyListCheck.hpp"
#include "read/ListAccess.hpp"
#import "selection/SelectionEntry.h"
#import "shell/SettingsKeys.h"

#include <utility>

namespace vant::media {
namespace {

Value valueOf(id object);

Value arrayOf(NSArray *array) {
    Value value{.kind = Value::Kind::Array, .text = {}, .elements = {}, .members = {}};
    for (id element in array)
        value.elements.push_back(valueOf(element));
    return value;
}

Value dictionaryOf(NSDictionary *dictionary) {
    Value value{.kind = Value::Kind::Dictionary, .text = {}, .elements = {}, .members = {}};
    for (id key in [[dictionary allKeys] sortedArrayUsingSelector:@selector(compare:)])
        value.members.push_back({utf8([key description]), valueOf([dictionary objectForKey:key])});
    return value;
}

Value valueOf(id object) {
    if ([object isKindOfClass:[NSArray class]])
        return arrayOf(object);
    if ([object isKindOfClass:[NSDictionary class]])
        return dictionaryOf(object);
    if (const auto text = optionalUTF8(object))
        return {.kind = Value::Kind::Text, .text = *text, .elements = {}, .members = {}};
    return {
        .kind = object == nil ? Value::Kind::Absent : Value::Kind::Other, .text = {}, .elements = {}, .members = {}};
}

/// Where markup is not well formed, as the platform's parser of markup says it; empty when that has nothing to say.
std::string markupFault(NSData *bytes) {
    NSXMLParser *parser = [[[NSXMLParser alloc] initWithData:bytes] autorelease];
    if ([parser parse])
        return "";
    NSString *words = [[parser parserError] localizedDescription];
    return "line " + std::to_string([parser lineNumber]) + (words == nil ? "" : ": " + utf8(words));
}

/// Why the platform's reader takes these bytes for no property list; empty when it does take them.
std::string parseFault(NSData *bytes) {
    NSError *error = nil;
    @try {
        if ([NSPropertyListSerialization propertyListWithData:bytes options:0 format:nullptr error:&error] != nil)
            return "";
    } @catch (NSException *exception) {
        return utf8([exception reason]);
    }
    const std::string markup = markupFault(bytes);
    const std::string words = utf8([error localizedDescription]);
    const bool isMarkup = std::string_view(static_cast<const char *>([bytes bytes]), [bytes length]).starts_with('<');
    return isMarkup && !markup.empty() ? markup : words;
}

void explain(ListFile &file) {
    NSData *bytes = [NSData dataWithContentsOfFile:nsString(file.path)];
    const std::string_view text(static_cast<const char *>([bytes bytes]), [bytes length]);
    file.fault = bytes == nil ? ListFault::NotReadable : ListFault::Malformed;
    if (bytes == nil || text.empty()) {
        file.reason = text.empty() ? "the file is empty" : "";
        return;
    }
    if (!isPropertyListSafeToParse(text)) {
        file.fault = ListFault::Unsafe;
        return;
    }
    file.reason = parseFault(bytes);
    // A list of some other kind, such as a lone string: nothing is wrong with its syntax.
    if (file.reason.empty()) {
        file.fault = ListFault::None;
        file.root.kind = Value::Kind::Other;
    }
}

/// Reads the file as an array or a dictionary, whichever it is.
id readList(ListFile &file) {
    file.fault = accessFault(file.path, largestList);
    if (file.fault != ListFault::None)
        return nil;
    id list = VantArrayFromFile(nsString(file.path));
    if (list == nil)
        list = VantDictionaryFromFile(nsString(file.path));
    if (list == nil)
        explain(file);
    else
        file.root = valueOf(list);
    return list;
}

std::optional<std::string> textForKey(id container, NSString *key) {
    return optionalUTF8(VantStringForKey(container, key));
}

std::vector<std::string> modelNames(id models) {
    std::vector<std::string> names;
    if (![models isKindOfClass:[NSArray class]] && ![models isKindOfClass:[NSDictionary class]])
        return names;
    for (id model in models)
        if (const auto name = optionalUTF8(model))
            names.push_back(*name);
    return names;
}

void takeSettings(SettingsFile &settings, NSDictionary *list) {
    settings.switches = settingsSwitches(textForKey(list, VantSmartUpdateKey), textForKey(list, VantWebErrorKey),
                                         textForKey(list, VantDebugKey));
    settings.manualsLookedFor = areManualsLookedFor(textForKey(list, VantWithoutConnectionKey));
    settings.models = modelNames([list objectForKey:VantModelsKey]);
    NSDictionary *packages = VantDictionaryForKey(list, VantPackagesInfoKey);
    settings.secondScanDriver =
        textForKey(VantDictionaryForKey(packages, VantScanDriver1Key), VantScanDriver1LocationKey);
}

} // namespace

SelectionFile readSelection(const std::string &path) {
    SelectionFile selection;
    selection.file.path = path;
    @autoreleasepool {
        id list = readList(selection.file);
        if (![list isKindOfClass:[NSArray class]])
            return selection;
        for (id entry in list)
            selection.components.push_back(VantMediaComponentOfEntry(entry));
    }
    return selection;
}

SettingsFile readSettings(const std::string &path) {
    SettingsFile settings;
    settings.file.path = path;
    @autoreleasepool {
        id list = readList(settings.file);
        if ([list isKindOfClass:[NSDictionary class]])
            takeSettings(settings, list);
    }
    return settings;
}

SettingsKeys settingsKeys() {
    @autoreleasepool {
        return {.smartUpdate = utf8(VantSmartUpdateKey),
                .webError = utf8(VantWebErrorKey),
                .debug = utf8(VantDebugKey),
                .withoutConnection = utf8(VantWithoutConnectionKey),
                .models = utf8(VantModelsKey),
                .packagesInfo = utf8(VantPackagesInfoKey),
                .scanDriver = utf8(VantScanDriver1Key),
                .location = utf8(VantScanDriver1LocationKey)};
    }
}

std::optional<std::string> readText(const std::string &path) {
    if (accessFault(path, largestList) != ListFault::None)
        return std::nullopt;
    @autoreleasepool {
        // As the pane reads it.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
        return optionalUTF8([NSString stringWithContentsOfFile:nsString(path)]);
#pragma clang diagnostic pop
    }
}

std::optional<std::string> tableString(const std::string &table, const std::string &key) {
    if (accessFault(table, largestList) != ListFault::None)
        return std::nullopt;
    @autoreleasepool {
        return textForKey(VantDictionaryFromFile(nsString(table)), nsString(key));
    }
}

} // namespace vant::media

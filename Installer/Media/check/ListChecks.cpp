#include "check/Checks.hpp"
#include "check/Names.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>

namespace vant::media {
namespace {

using Words = std::vector<std::string>;

/// An entry's keys; the pane has them as strings of the platform, and a test holds the two together.
const Words entryKeys{"TYPE", "LOCATION"};

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string meant(std::string_view word, const Words &known) {
    const auto near = probablyMeant(word, known);
    return near ? "; probably " + quoted(*near) + " is meant" : "";
}

/// Kinds as a selection names them: what is reported to the host, or put by the pane itself.
Words kinds() {
    Words names;
    for (const Component &component : components())
        if (!component.name.ends_with(".pkg") && !component.name.ends_with(".app") && !component.inArchive)
            names.emplace_back(component.name);
    return names;
}

void checkKeys(const Value &dictionary, const Words &known, const std::string &subject, Findings &findings) {
    for (const Member &member : dictionary.members) {
        if (std::ranges::find(known, member.key) != known.end())
            continue;
        const bool isNear = probablyMeant(member.key, known).has_value();
        findings.push_back({isNear ? Severity::Warning : Severity::Note, "unknown-key", subject,
                            "the key " + quoted(member.key) + " is never read" + meant(member.key, known)});
    }
}

void checkElement(const Value &entry, const std::string &key, const std::string &subject, Findings &findings) {
    const Value &element = entry.at(key);
    if (element.at("text").kind == Value::Kind::Text) {
        checkKeys(element, {"text"}, subject, findings);
        return;
    }
    const Severity severity = key == "LOCATION" ? Severity::Error : Severity::Warning;
    std::string message =
        "the entry has no " + key + " that is read: it has to be a dictionary with a string under \"text\"";
    if (element.kind != Value::Kind::Absent)
        message += ", but is " + std::string(kindName(element.kind));
    for (const Member &member : element.members)
        message += meant(member.key, {"text"});
    findings.push_back(
        {severity, key == "LOCATION" ? "entry-without-location" : "entry-without-kind", subject, message});
}

/// Packages of the web are ordered by their file names, so that their kinds matter to the host alone.
void checkKind(const Value &entry, const std::string &subject, Flow flow, Findings &findings) {
    static const Words known = kinds();
    const std::string &kind = entry.at("TYPE").at("text").text;
    if (entry.at("TYPE").at("text").kind != Value::Kind::Text || std::ranges::find(known, kind) != known.end())
        return;
    const bool isMedia = flow == Flow::Media;
    findings.push_back({isMedia ? Severity::Warning : Severity::Note, "unknown-kind", subject,
                        "the kind " + quoted(kind) + " is not known, so that it is " +
                            (isMedia ? "installed last" : "not reported to the host") + meant(kind, known)});
}

void checkEntry(const Value &entry, const std::string &subject, Flow flow, Findings &findings) {
    if (entry.kind != Value::Kind::Dictionary) {
        findings.push_back({Severity::Error, "wrong-type", subject,
                            "the entry is " + std::string(kindName(entry.kind)) + " instead of a dictionary"});
        return;
    }
    checkKeys(entry, entryKeys, subject, findings);
    checkElement(entry, "TYPE", subject, findings);
    checkElement(entry, "LOCATION", subject, findings);
    checkKind(entry, subject, flow, findings);
}

void checkRoot(const ListFile &file, Value::Kind expected, Findings &findings) {
    if (file.fault == ListFault::None && file.root.kind != expected)
        findings.push_back({Severity::Error, "wrong-type", file.path,
                            "the file holds " + std::string(kindName(file.root.kind)) + " instead of " +
                                std::string(kindName(expected)) + ", and counts as missing"});
}

/// A switch is on with one text alone; whatever else was written is probably meant to be on.
void checkSwitch(const Value &settings, const std::string &key, const std::string &on, const Words &off,
                 const std::string &path, Findings &findings) {
    const Value &value = settings.at(key);
    if (value.kind == Value::Kind::Absent || value.text == on ||
        (value.kind == Value::Kind::Text && std::ranges::find(off, value.text) != off.end()))
        return;
    const std::string is = value.kind == Value::Kind::Text ? quoted(value.text) : std::string(kindName(value.kind));
    findings.push_back({Severity::Warning, "switch-value", path,
                        quoted(key) + " is " + is + ", which counts as off; only the string " + quoted(on) + " is on"});
}

void checkPackagesInfo(const Survey &found, const SettingsKeys &keys, Findings &findings) {
    const ListFile &file = found.settings.file;
    const Value &packages = file.root.at(keys.packagesInfo);
    checkKeys(packages, {keys.scanDriver}, file.path, findings);
    checkKeys(packages.at(keys.scanDriver), {keys.location}, file.path, findings);
    const Value &location = packages.at(keys.scanDriver).at(keys.location);
    if (location.kind != Value::Kind::Absent && location.kind != Value::Kind::Text)
        findings.push_back({Severity::Warning, "wrong-type", file.path,
                            "the location of " + quoted(keys.scanDriver) + " is " +
                                std::string(kindName(location.kind)) + " instead of a string, and counts as missing"});
}

void checkModels(const Survey &found, const SettingsKeys &keys, Findings &findings) {
    const ListFile &file = found.settings.file;
    const Value &models = file.root.at(keys.models);
    using enum Value::Kind;
    if (models.kind != Absent && models.kind != Array && models.kind != Dictionary)
        findings.push_back({Severity::Warning, "wrong-type", file.path,
                            quoted(keys.models) + " is " + std::string(kindName(models.kind)) +
                                " instead of an array or a dictionary, and names no model"});
    if (!found.input.manualWanted && found.settings.manualsLookedFor)
        findings.push_back(
            {Severity::Warning, "manual-not-found", file.path,
             "manuals are asked for, but no folder MANUAL/<model> of the media goes by the name of a model"});
    for (const std::string &model : found.modelsWithoutManual)
        if (found.input.manualWanted)
            findings.push_back(
                {Severity::Note, "model-without-manual", model, "the media have no manual of this model"});
}

} // namespace

void checkList(const ListFile &file, const std::string &what, Severity whenMissing, Findings &findings) {
    const auto add = [&](Severity severity, const char *code, const std::string &message) {
        findings.push_back({severity, code, file.path, message});
    };
    switch (file.fault) {
    case ListFault::None:
        return;
    case ListFault::Missing:
        return add(whenMissing, "list-missing", "the " + what + " is missing");
    case ListFault::NotAFile:
        return add(Severity::Error, "list-no-file",
                   "the " + what + " is no file; a pipe would hold the pane up for ever");
    case ListFault::NotReadable:
        return add(Severity::Error, "list-unreadable", "the " + what + " cannot be read");
    case ListFault::TooLarge:
        return add(Severity::Error, "list-too-large", "the " + what + " is larger than 16 MB and was not read");
    case ListFault::Unsafe:
        return add(Severity::Error, "list-unsafe",
                   "the " + what + " is damaged or nests too deep, and counts as missing");
    case ListFault::Malformed:
        return add(Severity::Error, "list-malformed",
                   "the " + what + " cannot be parsed, and counts as missing" +
                       (file.reason.empty() ? "" : ": " + file.reason));
    }
}

void checkSelection(const SelectionFile &selection, Flow flow, Findings &findings) {
    const ListFile &file = selection.file;
    checkList(file, flow == Flow::Web ? "web selection" : "selection", Severity::Error, findings);
    checkRoot(file, Value::Kind::Array, findings);
    if (file.root.kind != Value::Kind::Array)
        return;
    if (file.root.elements.empty())
        findings.push_back({Severity::Warning, "selection-empty", file.path, "the selection has no entry"});
    for (std::size_t i = 0; i < file.root.elements.size(); ++i)
        checkEntry(file.root.elements[i], file.path + ", entry " + std::to_string(i + 1), flow, findings);
}

void checkSettings(const Survey &found, Findings &findings) {
    const ListFile &file = found.settings.file;
    checkList(file, "settings file", Severity::Warning, findings);
    checkRoot(file, Value::Kind::Dictionary, findings);
    if (file.root.kind != Value::Kind::Dictionary)
        return;
    const SettingsKeys keys = settingsKeys();
    checkKeys(file.root,
              {keys.smartUpdate, keys.webError, keys.debug, keys.withoutConnection, keys.models, keys.packagesInfo},
              file.path, findings);
    checkSwitch(file.root, keys.smartUpdate, "1", {"0", ""}, file.path, findings);
    checkSwitch(file.root, keys.webError, "1", {"0", ""}, file.path, findings);
    checkSwitch(file.root, keys.debug, "debug_on", {"debug_off", "0", ""}, file.path, findings);
    checkSwitch(file.root, keys.withoutConnection, "no", {"yes", ""}, file.path, findings);
    checkPackagesInfo(found, keys, findings);
    checkModels(found, keys, findings);
    if (found.web && found.input.webError)
        findings.push_back(
            {Severity::Warning, "web-error-set", file.path,
             quoted(keys.webError) + " is \"1\", so that the media view is taken and nothing downloaded"});
}

} // namespace vant::media

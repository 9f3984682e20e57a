#include "GNUstep/tools/package/Installation.hpp"

#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/archive/PlainBytes.hpp"
#include "GNUstep/tools/platform/WorkerLimits.hpp"
#include "GNUstep/tools/process/Worker.hpp"
#include "GNUstep/tools/tree/Expansion.hpp"
#include "GNUstep/tools/tree/Merge.hpp"

#include <filesystem>

namespace vant::tools {

namespace fs = std::filesystem;

namespace {

constexpr mode_t allPermissions = 0777;

/// The folder of the volume that a component goes to.
EntryPath placeOf(const Component &component) {
    const auto inside = fs::path(component.installLocation).relative_path();
    const auto place = safeEntryPath(inside.empty() ? "." : inside.string());
    if (!place)
        throw ExpansionError("The package wants to be installed outside of the volume.");
    return *place;
}

} // namespace

Installation::Installation(const Package &package, const Staging &staging, InstallReport &report,
                           const Watchdog &watchdog)
    : package_(package), staging_(staging), report_(report), watchdog_(watchdog), scripts_(package, staging.wanted()) {}

void Installation::run() {
    staging_.create();
    scripts_.makeSureTheyRun();
    joined_ = staging_.makeFolder("Root");
    progress(0);
    if (package_.form == Package::Form::Bundle)
        stageBundleScripts();
    forEachPart(package_, [this](std::size_t index, Part part, ByteSource &source) { stage(index, part, source); });
    joinPayloads();
    finished_ = package_.size();
    progress(0);
    liftMemoryLimit();
    putInPlace();
}

std::string Installation::folderFor(std::size_t index, Part part) {
    return (part == Part::Payload ? "Payload" : "Scripts") + std::to_string(index);
}

void Installation::stageBundleScripts() const {
    const auto &component = package_.components.front();
    if (component.hasScripts())
        fs::copy(component.scripts, staging_.makeFolder(folderFor(0, Part::Scripts)),
                 fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

void Installation::stage(std::size_t index, Part part, ByteSource &source) {
    const auto &component = package_.components[index];
    const auto place = part == Part::Payload ? placeOf(component) : EntryPath();
    PlainBytes plain(source);
    const auto reader = ArchiveReader::payload(plain.source());
    Destination destination(staging_.makeFolder(folderFor(index, part)), allPermissions, place);
    expand(*reader, destination, {}, [&] { progress(part == Part::Payload ? source.taken() : 0); });
    plain.source().drain();
    if (part == Part::Payload)
        finished_ += component.size;
    progress(0);
}

void Installation::joinPayloads() const {
    for (std::size_t i = 0; i < package_.components.size(); ++i) {
        if (package_.components[i].payload.empty())
            continue;
        const auto folder = staging_.folder() + '/' + folderFor(i, Part::Payload);
        Merge(folder, joined_, Merge::Links::Refused).run();
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        watchdog_.progressed();
    }
}

void Installation::putInPlace() {
    const Uninterrupted now;
    runScripts(false);
    Merge merge(joined_, staging_.wanted(), Merge::Links::FollowedInside);
    merge.run();
    try {
        runScripts(true);
    } catch (...) {
        merge.undo();
        throw;
    }
}

void Installation::runScripts(bool afterwards) {
    for (std::size_t i = 0; i < package_.components.size(); ++i) {
        const auto &component = package_.components[i];
        const auto &names = afterwards ? component.after : component.before;
        if (names.empty())
            continue;
        report_.runningScripts();
        const auto folder = '/' + fs::path(staging_.folder()).filename().string() + '/' + folderFor(i, Part::Scripts);
        scripts_.run(component, names, folder);
    }
}

void Installation::progress(std::uint64_t taken) {
    watchdog_.progressed();
    const auto all = package_.size();
    report_.unpacked(all == 0 ? 1 : static_cast<double>(finished_ + taken) / static_cast<double>(all));
}

} // namespace vant::tools

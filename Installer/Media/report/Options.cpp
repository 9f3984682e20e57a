#include "report/Options.hpp"

#include "base/Languages.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace vant::media {
namespace {

using Command = Options::Command;

constexpr std::uint64_t megabyte = 1'000'000;

Command commandOf(const std::string &word) {
    if (word == "plan")
        return Command::Plan;
    if (word == "check")
        return Command::Check;
    if (word == "--help" || word == "-h" || word == "help")
        return Command::Help;
    if (word == "--version")
        return Command::Version;
    throw std::invalid_argument("\"" + word + "\" is no command; there are plan and check");
}

/// Goes through the arguments from one to the next.
class Reader {
public:
    explicit Reader(std::span<const std::string> arguments) : left_(arguments) {}

    [[nodiscard]] bool atEnd() const { return left_.empty(); }
    const std::string &next() {
        const std::string &first = left_.front();
        left_ = left_.subspan(1);
        return first;
    }
    const std::string &valueOf(const std::string &option) {
        if (atEnd())
            throw std::invalid_argument(option + " needs a value");
        return next();
    }

private:
    std::span<const std::string> left_;
};

/// A number from 1 on, within what an int holds.
std::uint64_t numberOf(const std::string &option, const std::string &text) {
    int number = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc() || end != text.data() + text.size() || number < 1)
        throw std::invalid_argument(option + " needs a whole number, 1 or more");
    return static_cast<std::uint64_t>(number);
}

/// A check visits the site; a plan only names addresses below it.
std::string takeSite(Options &options, const std::string &address) {
    options.request.isSiteVisited = options.command == Command::Check;
    if (options.request.isSiteVisited && address.find("://") == std::string::npos)
        throw std::invalid_argument("\"" + address + "\" is no address");
    return address;
}

void takeOption(Options &options, const std::string &option, Reader &reader) {
    if (option == "--json")
        options.isJson = true;
    else if (option == "--strict")
        options.isStrict = true;
    else if (option == "--offline")
        options.request.isOffline = true;
    else if (option == "--media")
        options.media.push_back(reader.valueOf(option));
    else if (option == "--settings")
        options.request.settings = reader.valueOf(option);
    else if (option == "--selection")
        options.request.selection = reader.valueOf(option);
    else if (option == "--web")
        options.request.webSelection = reader.valueOf(option);
    else if (option == "--site")
        options.request.site = takeSite(options, reader.valueOf(option));
    else if (option == "--keep")
        options.keep = reader.valueOf(option);
    else if (option == "--wait")
        options.limits.wait = static_cast<double>(numberOf(option, reader.valueOf(option)));
    else if (option == "--largest")
        options.limits.largest = numberOf(option, reader.valueOf(option)) * megabyte;
    else if (option == "--tables")
        options.request.tables = reader.valueOf(option);
    else if (option == "--language")
        options.language = reader.valueOf(option);
    else if (option == "--help" || option == "-h")
        options.command = Command::Help;
    else
        throw std::invalid_argument("\"" + option + "\" is no option");
}

/// Without a folder there is one selection, the site's.
void arrangeSite(Options &options) {
    Request &request = options.request;
    if (options.media.size() > 1)
        throw std::invalid_argument("a site is checked with one media folder, or with none");
    if (request.isOffline)
        throw std::invalid_argument("a site cannot be visited --offline");
    if (!options.media.empty() || !request.selection)
        return;
    if (request.webSelection)
        throw std::invalid_argument("without a media folder, --selection and --web are the same");
    request.webSelection = std::exchange(request.selection, std::nullopt);
}

std::string languageCodes() {
    std::string codes;
    for (const Language &language : languages())
        codes += (codes.empty() ? "" : ", ") + std::string(language.code);
    return codes;
}

void test(Options &options) {
    if (options.command == Command::Help || options.command == Command::Version)
        return;
    if (options.keep && !options.request.isSiteVisited)
        throw std::invalid_argument("--keep is for check with --site");
    if (options.media.empty() && !options.request.isSiteVisited)
        throw std::invalid_argument("no media folder is named");
    if (options.command == Command::Plan && options.media.size() > 1)
        throw std::invalid_argument("plan takes one media folder");
    if (languageOfCode(options.language) == nullptr)
        throw std::invalid_argument("\"" + options.language + "\" is no language code; there are " + languageCodes());
    if (options.request.isSiteVisited)
        arrangeSite(options);
}

} // namespace

Options optionsOf(std::span<const std::string> arguments) {
    Reader reader(arguments);
    if (reader.atEnd())
        throw std::invalid_argument("no command is given; there are plan and check");
    Options options;
    options.command = commandOf(reader.next());
    bool onlyFolders = false;
    while (!reader.atEnd()) {
        const std::string &argument = reader.next();
        if (argument == "--" && !onlyFolders)
            onlyFolders = true;
        else if (!onlyFolders && argument.starts_with("-"))
            takeOption(options, argument, reader);
        else
            options.media.push_back(argument);
    }
    test(options);
    return options;
}

std::string helpText() {
    return "usage: vantmedia plan MEDIA [OPTION…]\n"
           "       vantmedia check MEDIA… [OPTION…]\n"
           "       vantmedia check --site URL [MEDIA] [OPTION…]\n"
           "\n"
           "plan says what the pane would do with a media folder; check says what is wrong with it, and reads every\n"
           "package through. A media folder is laid out as for ./run --media. Nothing is written or installed.\n"
           "check --site fetches every archive of a download site and says what becomes of each package in it, and, "
           "with\n"
           "a media folder, what the two hold together.\n"
           "\n"
           "  --media DIR       the same as MEDIA\n"
           "  --settings FILE   settings instead of the folder's VantUserSettings.plist\n"
           "  --selection FILE  selection instead of the folder's SelectedInput.plist\n"
           "  --web FILE        the web view, with this selection; archives beside the file are looked into\n"
           "  --site URL        what relative addresses of the web selection are below (default: http://site); check\n"
           "                    fetches from there, and takes URL/SelectedInput.plist for want of another selection\n"
           "  --keep DIR        check --site: keeps what was fetched, in a new or empty folder\n"
           "  --wait SECONDS    check --site: a server has to send 1,000 bytes a second over this time (default: 60)\n"
           "  --largest MB      check --site: larger answers are given up (default: 4294)\n"
           "  --offline         the web view when the site cannot be reached\n"
           "  --language CODE   language of the status texts (default: EN): " +
           languageCodes() +
           "\n"
           "  --tables DIR      string tables of the plug-in (default: those of the bundle beside the program)\n"
           "  --json            a JSON document instead of text\n"
           "  --strict          check: exit with 3 when there are warnings\n"
           "  --help, --version\n"
           "\n"
           "Exit status: 0 nothing found; 1 errors; 2 usage; 3 warnings only, with --strict.\n"
           "\n"
           "Examples:\n"
           "  vantmedia plan /Volumes/RX-100\n"
           "  vantmedia plan media --web site/SelectedInput.plist --json\n"
           "  vantmedia check --strict media\n"
           "  vantmedia check --site https://download.example.com/RX-100\n"
           "  vantmedia check media --site https://download.example.com/RX-100 --keep archives\n";
}

int exitStatus(std::span<const Findings> findings, bool isStrict) noexcept {
    const auto holds = [&](Severity severity) {
        return std::ranges::any_of(findings, [severity](const Findings &each) {
            return std::ranges::find(each, severity, &Finding::severity) != each.end();
        });
    };
    if (holds(Severity::Error))
        return 1;
    return isStrict && holds(Severity::Warning) ? 3 : 0;
}

} // namespace vant::media

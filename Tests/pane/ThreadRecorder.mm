#import "ThreadRecorder.h"

#import "PaneTest.h"

#include "Jail.hpp"
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <regex>
#include <sstream>

namespace vant::test {

namespace {

std::mutex recordMutex;
ThreadsByOperation recorded;
std::map<std::string, IMP> originals;

using Operation = void *(*)(id, SEL, void *, void *, void *);

void *recordAndCall(id receiver, SEL name, void *first, void *second, void *third) {
    IMP original = nullptr;
    {
        const std::lock_guard lock(recordMutex);
        recorded[sel_getName(name)].insert([NSThread isMainThread] ? "main" : "installer");
        original = originals.at(sel_getName(name));
    }
    return reinterpret_cast<Operation>(original)(receiver, name, first, second, third);
}

bool fitsRegisters(const char *type) {
    return std::strchr("v@#:^*cCsSiIlLqQBr", type[0]) != nullptr;
}

bool canBeRecorded(Method method) {
    if (method_getNumberOfArguments(method) > 5)
        return false;
    char *result = method_copyReturnType(method);
    bool fits = fitsRegisters(result);
    std::free(result);
    for (unsigned argument = 2; fits && argument < method_getNumberOfArguments(method); ++argument) {
        char *type = method_copyArgumentType(method, argument);
        fits = fitsRegisters(type);
        std::free(type);
    }
    return fits;
}

/// The selector of a declaration such as "- (void)unzip:(NSString *)path ExtractPath:(NSString *)folder;".
std::string selectorOf(std::string declaration) {
    declaration = std::regex_replace(declaration, std::regex(R"(\([^()]*(\([^()]*\)[^()]*)*\))"), "");
    std::string selector;
    static const std::regex part(R"((\w+):)");
    for (std::sregex_iterator at(declaration.begin(), declaration.end(), part), end; at != end; ++at)
        selector += at->str();
    if (!selector.empty())
        return selector;
    std::smatch name;
    return std::regex_search(declaration, name, std::regex(R"(\w+)")) ? name.str() : "";
}

std::string threadIn(const std::string &comment) {
    std::smatch found;
    return std::regex_search(comment, found, std::regex("Thread: (main|installer|any)")) ? found[1].str() : "";
}

/// Reads one header: a comment before the class or the category holds for all of it, one before an operation for that.
void readHeader(const std::string &text, std::map<std::string, std::string> &threads) {
    std::istringstream lines(text);
    std::string comment;
    std::string ofCategory;
    bool inPane = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("///")) {
            comment += line.substr(3);
            continue;
        }
        if (line.starts_with("@interface") || line.starts_with("@protocol")) {
            inPane = line.starts_with("@interface VantInstallation");
            ofCategory = threadIn(comment);
        } else if (inPane && (line.starts_with("- (") || line.starts_with("+ ("))) {
            for (std::string more; line.find(';') == std::string::npos && std::getline(lines, more);)
                line += more;
            const std::string own = threadIn(comment);
            threads[selectorOf(line)] = own.empty() ? ofCategory : own;
        }
        comment.clear();
    }
}

} // namespace

void recordThreads() {
    if (!originals.empty())
        return;
    unsigned count = 0;
    Method *methods = class_copyMethodList(paneClass(), &count);
    for (unsigned i = 0; i < count; ++i) {
        if (!canBeRecorded(methods[i]))
            continue;
        originals[sel_getName(method_getName(methods[i]))] = method_getImplementation(methods[i]);
        method_setImplementation(methods[i], reinterpret_cast<IMP>(recordAndCall));
    }
    std::free(methods);
}

ThreadsByOperation recordedThreads() {
    const std::lock_guard lock(recordMutex);
    return recorded;
}

std::map<std::string, std::string> threadsInHeaders(const std::filesystem::path &folder) {
    std::map<std::string, std::string> threads;
    for (const auto &file : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string name = file.path().filename().string();
        if (name.starts_with("VantInstallation") && name.ends_with(".h") && name != "VantInstallationLogger.h")
            readHeader(contentsOf(file.path()), threads);
    }
    return threads;
}

} // namespace vant::test

#include "Jail.hpp"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace vant::test {

Jail::Jail() {
    std::string pattern = (fs::temp_directory_path() / "vant-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder can be made at " + pattern);
    root_ = fs::canonical(pattern);
}

Jail::~Jail() {
    std::error_code ignored;
    for (auto entry = fs::recursive_directory_iterator(root_, ignored); entry != fs::end(entry);
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(root_, ignored);
}

fs::path writeFile(const fs::path &path, std::string_view content) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    return path;
}

fs::path writeProgram(const fs::path &path, std::string_view content) {
    writeFile(path, content);
    fs::permissions(path, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec, fs::perm_options::add);
    return path;
}

std::string contentsOf(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return std::move(content).str();
}

} // namespace vant::test

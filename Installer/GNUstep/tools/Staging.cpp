#include "Staging.hpp"

#include "ExpansionError.hpp"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace vant {

namespace fs = std::filesystem;

Staging::Staging(const std::string &folder) : wanted_(folder), staged_(folder) {
    std::error_code problem;
    if (fs::symlink_status(folder, problem).type() != fs::file_type::not_found)
        return;
    auto wanted = fs::absolute(folder).lexically_normal();
    if (!wanted.has_filename())
        wanted = wanted.parent_path();
    fs::create_directories(wanted.parent_path(), problem);
    wanted_ = wanted;
    staged_ = wanted.parent_path() / ".ditto-XXXXXX";
    if (::mkdtemp(staged_.data()) == nullptr)
        throw systemError(folder, errno);
    ::chmod(staged_.c_str(), 0755);
}

Staging::~Staging() {
    std::error_code ignored;
    if (staged_ != wanted_)
        fs::remove_all(staged_, ignored);
}

void Staging::commit() {
    if (staged_ != wanted_ && std::rename(staged_.c_str(), wanted_.c_str()) != 0)
        throw systemError(wanted_, errno);
    staged_ = wanted_;
}

} // namespace vant

#include "read/ListAccess.hpp"

#include <unistd.h>

#include <filesystem>

namespace vant::media {

namespace fs = std::filesystem;

ListFault accessFault(const std::string &path, std::uintmax_t largest) {
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    if (status.type() == fs::file_type::not_found)
        return ListFault::Missing;
    if (problem)
        return ListFault::NotReadable;
    if (status.type() != fs::file_type::regular)
        return ListFault::NotAFile;
    if (fs::file_size(path, problem) > largest)
        return ListFault::TooLarge;
    return access(path.c_str(), R_OK) == 0 ? ListFault::None : ListFault::NotReadable;
}

} // namespace vant::media

#pragma once
#include "GNUstep/tools/archive/NameEncoding.hpp"

#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <optional>
#include <span>

namespace vant::tools {

/// What the tools' `main` have in common: reads the command line by `parse`, prints `usage` on standard error when that
/// gives nothing, and gives the status of `run` otherwise.
template<class Request>
int toolMain(int count, char **arguments, const char *usage, std::optional<Request> (*parse)(std::span<char *const>),
             int (*run)(const Request &)) {
    const auto request = parse(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
    if (!request) {
        std::fputs(usage, stderr);
        return 1;
    }
    // A reader that closes its end must not leave the work half done.
    std::signal(SIGPIPE, SIG_IGN);
    useUTF8Names();
    ::umask(S_IWGRP | S_IWOTH);
    return run(*request);
}

} // namespace vant::tools

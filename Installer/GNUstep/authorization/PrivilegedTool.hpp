#pragma once
#include "GNUstep/authorization/ToolExit.hpp"

#include <cstdio>
#include <string>

namespace vant {

/// Whether a tool was executed; `noChannel` when no stream could be made.
enum class ToolLaunch { started, notExecutable, noChannel };

/// Where the tool is run from: below `$VANT_SYSTEM_ROOT` when it exists there, else the path as it stands.
[[nodiscard]] std::string toolLocation(const std::string &path);

/// Runs the tool and returns as soon as it has been executed or refused. With a channel asked for, the stream is the
/// tool's standard input and output; without one its standard input is the null device. The arguments end in a null
/// pointer; a null list is an empty one. The child is reaped when it exits, and `onExit`, if there is one, is called on
/// the thread that waited for it. Any thread.
[[nodiscard]] ToolLaunch launchTool(const std::string &path, char *const *arguments, FILE **channel,
                                    ToolExitHandler onExit = nullptr);

} // namespace vant

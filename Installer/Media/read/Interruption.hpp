#pragma once

namespace vant::media {

/// From here on requests to end (by the keyboard, or SIGTERM) are noted instead of obeyed at once, so that temporary
/// folders go with their owners.
void noteInterruptions();

/// Throws std::runtime_error when this process was asked to end. Any thread.
void throwIfInterrupted();

} // namespace vant::media

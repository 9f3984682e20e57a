#include "read/Interruption.hpp"

#include <csignal>
#include <initializer_list>
#include <stdexcept>

namespace vant::media {
namespace {

volatile std::sig_atomic_t isInterrupted = 0;

void note(int /*number*/) {
    isInterrupted = 1;
}

} // namespace

void noteInterruptions() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, note);
}

void throwIfInterrupted() {
    if (isInterrupted != 0)
        throw std::runtime_error("interrupted");
}

} // namespace vant::media

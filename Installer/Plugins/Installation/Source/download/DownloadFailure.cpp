#include "download/DownloadFailure.hpp"

namespace vant {
namespace {

enum class FailureClass { Network, Disk, Unknown };

constexpr int retriesAllowed = 2;

FailureClass failureClass(int code) noexcept {
    switch (code) {
    case -1009: // not connected to the internet
    case -1005: // connection lost
    case -1003: // cannot find the host
    case -1001: // timed out
        return FailureClass::Network;
    case -3003: // cannot write the file
        return FailureClass::Disk;
    default:
        return FailureClass::Unknown;
    }
}

} // namespace

FailureOutcome failureOutcome(int code, int retriesUsed) noexcept {
    switch (failureClass(code)) {
    case FailureClass::Network:
        return retriesUsed < retriesAllowed ? FailureOutcome::Retry : FailureOutcome::NetworkLost;
    case FailureClass::Disk:
        return FailureOutcome::CannotWrite;
    case FailureClass::Unknown:
        break;
    }
    return FailureOutcome::Final;
}

std::string_view failureTrace(int code) noexcept {
    switch (failureClass(code)) {
    case FailureClass::Network:
        return "***ERROR*** Download did fail with error: 1009,1001,1005,1003";
    case FailureClass::Disk:
        return "***ERROR*** Download did fail with error: 3003";
    case FailureClass::Unknown:
        break;
    }
    return "***ERROR*** Download did fail with error: Unknown error";
}

bool fallsBack(FailureOutcome outcome, bool fallenBack) noexcept {
    return outcome == FailureOutcome::NetworkLost && !fallenBack;
}

} // namespace vant

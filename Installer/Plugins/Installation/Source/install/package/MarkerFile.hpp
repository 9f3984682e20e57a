#pragma once

namespace vant {

/// The marker exists while a printer driver is being installed; other programs of the machine may look for it. It lies
/// in a folder that everybody may write to.
inline constexpr const char *markerFile = "/tmp/universalCD.txt";

/// Makes the marker anew, empty. Follows no link that lies in its place, and leaves anything but a file or a link there
/// as it is. Failures are silent. Any thread.
void createMarkerFile() noexcept;

/// Removes the marker if it is a file; anything else in its place stays. Any thread.
void removeMarkerFile() noexcept;

} // namespace vant

#pragma once

namespace vant {

/// The two ways that packages come to be installed. Both share one chain of packages and differ in names and wording.
enum class InstallFlow { Web, Media };

} // namespace vant

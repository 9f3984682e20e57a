#pragma once

namespace vant::tools {

/// From here on the archive library takes and gives names as UTF-8, as they stand in archives, whatever language this
/// process runs in. For the whole process.
void useUTF8Names();

} // namespace vant::tools

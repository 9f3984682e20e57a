#include "GNUstep/tools/archive/NameEncoding.hpp"

#include <clocale>
#include <initializer_list>

namespace vant::tools {

void useUTF8Names() {
    // Debian has the first of them, macOS the second, and from 15 on both.
    for (const char *name : {"C.UTF-8", "UTF-8"})
        if (std::setlocale(LC_CTYPE, name) != nullptr)
            return;
}

} // namespace vant::tools

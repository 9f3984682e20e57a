// Assertions that hold in release builds too: a pane whose state contradicts itself must not go on installing. Included
// last, and without a guard, because <cassert> follows the switch as it stands at each inclusion.
#undef NDEBUG
#include <cassert>

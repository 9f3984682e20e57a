#pragma once
#include_next <AppKit/NSButtonCell.h>

/// The platform's name since macOS 10.12 for what GNUstep has under the older one alone.
static const NSBezelStyle NSBezelStyleRounded = NSRoundedBezelStyle;

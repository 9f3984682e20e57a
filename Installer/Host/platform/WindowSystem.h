#pragma once

@class NSWindow;

/// Draws what waits for it in all windows of the application, and sends it to the screen. Main thread.
void VantDrawWindows(void);

/// Asks the window system for the keyboard again for a window that the application takes for its key window. Does
/// nothing for another. Main thread.
///
/// A window manager puts a window on the screen in its own time. Until then it can't be given the keyboard, and a
/// request that came too early is forgotten.
void VantRequestKeyboard(NSWindow *window);

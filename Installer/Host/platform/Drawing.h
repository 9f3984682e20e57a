#pragma once

/// Draws what waits for it in all windows of the application, and sends it to the screen. Main thread.
void VantDrawWindows(void);

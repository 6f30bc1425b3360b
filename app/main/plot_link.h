#pragma once
// The plot engine as the shell sees it; without it, the title screen stands in.
#include "app/present.h"

namespace zendrite {

void Connect_Plot();
void Root_Mouse(const WIN_MESSAGE& message);
void Root_Wheel(const WIN_MESSAGE& message);  // X zoomed about the mouse
void Root_Key(const WIN_MESSAGE& message);    // Home: the full range
void Root_Repaint();
// The show flags from before a click on a contour row showed one pattern alone.
void Root_Restore_Shown();
bool Root_Focus();  // false when there is no plot to focus

}  // namespace zendrite

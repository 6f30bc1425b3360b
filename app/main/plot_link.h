#pragma once
// The plot engine as the shell sees it; without it, the title screen stands in.
#include "app/present.h"

namespace zendrite {

void Connect_Plot();
void Root_Mouse(const WIN_MESSAGE& message);
void Root_Repaint();
bool Root_Focus();  // false when there is no plot to focus

}  // namespace zendrite

// Zendrite 2D: the main window stays as it is while the frames window is open.
#include "app/main/frames_window.h"
#include "app/main/menu_groups.h"

namespace zendrite {

void Frames_Mode(int) { Open_Frames_Window(); }

}  // namespace zendrite

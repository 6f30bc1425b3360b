// A zone of the peak search chosen with a band across the frame; a right
// press gives up. The search itself is the shell's, through its hook.
#include <algorithm>

#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot_state.h"

namespace zendrite {

namespace {

void leave(MOUSE_STATE& m) {
    if (m.drag == 1) {
        Band_Mode_On();
        Band_Strip(m.start_px, m.last_px);
        Band_Mode_Off();
    }
    m.drag = 0;
    m.zone_search = false;
    WMessageMouseMove(false);
    WCursorShape(0);
}

}  // namespace

void MouseMovement_SearchZone(const WIN_MESSAGE& e) {
    MOUSE_STATE& m = Mouse_State();
    // the peak mode was left before a band was drawn
    if (zendrite_param_global().calc_mode != 2) {
        m.zone_search = false;
        MouseMovement_Default(e);
        return;
    }
    if (e.type == MouseButDown && e.value1 == kLeftButton) {
        WMessageMouseMove(true);
        m.drag = 1;
        m.start_px = m.last_px = e.gx;
        Band_Mode_On();
        Band_Strip(m.start_px, m.last_px);
    } else if (e.type == MouseButDown && e.value1 == kRightButton) {
        leave(m);
    } else if (e.type == MouseMove) {
        Status_Position(e.gx, e.gy, true);
        if (m.drag != 1) return;
        Band_Mode_On();
        Band_Strip(m.start_px, m.last_px);
        m.last_px = e.gx;
        Band_Strip(m.start_px, m.last_px);
    } else if (e.type == MouseButUp && e.value1 == kLeftButton && m.drag == 1) {
        const float start = m.start_px;
        m.last_px = e.gx;
        leave(m);
        float x1 = 0, x2 = 0, y = 0;
        Page_To_Data(start, e.gy, x1, y);
        Page_To_Data(e.gx, e.gy, x2, y);
        if (Graphics_Hooks().search_zone) Graphics_Hooks().search_zone(std::min(x1, x2), std::max(x1, x2));
    }
}

}  // namespace zendrite

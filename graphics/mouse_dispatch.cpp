// Routing of the mouse events of the root window by graph_mode and MoveMode.
#include <algorithm>
#include <cmath>

#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/multi_views.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

MOUSE_STATE& Mouse_State() {
    static MOUSE_STATE state;
    return state;
}

void Mouse_Event(const WIN_MESSAGE& e) {
    using hxl::Same;
    const ZENDRITE_STORE& g = zendrite_param_global();
    const std::string& mode = g.graph_mode;
    if (e.type != MouseButDown && e.type != MouseButUp && e.type != MouseMove) return;
    if (Same(mode, "single") || Same(mode, "multi") || Same(mode, "multi_log")) {
        switch (g.MoveMode) {
        case 0: MouseMovement_Default(e); break;
        case 1: MouseMovement_DragPlot(e); break;
        case 2: MouseMovement_SelExclReg(e); break;
        case 3: MouseMovement_OffsetAlign(e); break;
        case 4: MouseMovement_ScaleY(e); break;
        case 5: MouseMovement_ScaleX(e); break;
        default: Graphics_Fault("Fault: /zendrite_win_root/Ihand_WinRoot/17 Unknown MoveMode ");
        }
    } else if (Same(mode, "calculation")) {
        if (Mouse_State().zone_search) MouseMovement_SearchZone(e);
        else MouseMovement_Default(e);
    } else if (Same(mode, "graph2dcontour") || Same(mode, "graph2dcontour_log")) {
        MouseMovement_graph2dcontour(e);
    } else if (Same(mode, "graph3d") || Same(mode, "graph3dsurf")) {
        MouseMovement_graph3d(e);
    }
}

void MouseMovement_graph2dcontour(const WIN_MESSAGE& e) { Contour_Mouse(e.type, e.value1, e.gx, e.gy); }

void MouseMovement_graph3d(const WIN_MESSAGE& e) {
    MOUSE_STATE& m = Mouse_State();
    if (e.type == MouseButDown) {
        WMessageMouseMove(true);
        m.start_px = e.gx;
        m.start_py = e.gy;
        return;
    }
    if (e.type != MouseButUp) return;
    WMessageMouseMove(false);
    // one degree per release, whatever the length of the drag
    if (!(e.gx > m.start_px)) {
        if (m.rotation > -180) --m.rotation;
    } else if (m.rotation < 180) {
        ++m.rotation;
    }
    if (!(e.gy > m.start_py)) {
        if (m.elevation > 0) --m.elevation;
    } else if (m.elevation < 45) {
        ++m.elevation;
    }
    WindowOutStatusBar(3, " Rotation : " + std::to_string(m.rotation));
    WindowOutStatusBar(4, " Elevation : " + std::to_string(m.elevation));
    m.start_px = e.gx;
    m.start_py = e.gy;
    Multi_View_Again(zendrite_param_global().graph_mode);
}

}  // namespace zendrite

// MoveMode 1: the plot follows the mouse.
#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
constexpr int kItemDrag = 40105, kItemPointer = 40113;
}

void MouseMovement_DragPlot(const WIN_MESSAGE& e) {
    using hxl::Same;
    ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    if (!Same(g.graph_mode, "single") && !Same(g.graph_mode, "multi") && !Same(g.graph_mode, "multi_log"))
        Graphics_Fault("Fault /zendrite_win_root/MouseMovement_DragPlot/026 operation not permited");
    float x = 0, y = 0;
    const bool inside = Page_To_Data(e.gx, e.gy, x, y);
    if (e.type == MouseButDown && e.value1 == kLeftButton) {
        if (!inside) return;
        m.last_x = x;
        m.last_y = y;
        m.drag = 1;
        WMessageMouseMove(true);
    } else if (e.type == MouseButDown && e.value1 == kRightButton) {
        g.MoveMode = 0;
        m.drag = 0;
        WCursorShape(0);
        if (WMenuHasItem(kItemPointer)) WMenuSetState(kItemPointer, 1, 1);
        if (WMenuHasItem(kItemDrag)) {
            WMenuSetState(kItemDrag, 1, 1);
            WMenuSetState(kItemDrag, 2, 0);
        }
    } else if (e.type == MouseButUp) {
        m.drag = 0;
        WMessageMouseMove(false);
    } else if (e.type == MouseMove && m.drag == 1 && inside) {
        const bool log = Graphics_State().frame.log;
        const float dx = (m.last_x - x) * 0.5f, dy = (m.last_y - y) * 0.5f;
        g.win_xmin += dx;
        g.win_xmax += dx;
        g.win_ymin = Window_Y(Frame_Y(g.win_ymin, log) + dy, log);
        g.win_ymax = Window_Y(Frame_Y(g.win_ymax, log) + dy, log);
        m.last_x = x;
        m.last_y = y;
        Plot_Again();
    }
}

}  // namespace zendrite

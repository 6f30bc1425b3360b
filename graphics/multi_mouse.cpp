// The mouse of the contour map and the keys of the 3D views.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#include "graphics/plot.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

void page_to_map(float px, float py, double& x, double& y) {
    const MULTI_VIEW_STATE& st = Multi_View_State();
    const MULTI_FRAME_TYPE f = Multi_Frame(1, 1);
    x = st.fx1 + (px - f.left) / (f.right - f.left) * (st.fx2 - st.fx1);
    y = st.fy1 + (py - f.bottom) / (f.top - f.bottom) * (st.fy2 - st.fy1);
}

bool inside(float px, float py) {
    const MULTI_FRAME_TYPE f = Multi_Frame(1, 1);
    return px >= f.left && px <= f.right && py >= f.bottom && py <= f.top;
}

// Index (from 1) of the row whose band holds y; 0 when none.
int row_at(double y) {
    const MULTI_VIEW_STATE& st = Multi_View_State();
    for (std::size_t i = 0; i < st.row_low.size(); ++i)
        if (y >= st.row_low[i] && y <= st.row_high[i]) return static_cast<int>(i) + 1;
    return 0;
}

std::string fixed(double v, const char* format) {
    char b[64];
    std::snprintf(b, sizeof b, format, v);
    return hxl::Trim(b);
}

void read_out(float px, float py) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const MULTI_VIEW_STATE& st = Multi_View_State();
    double x = 0, y = 0;
    page_to_map(px, py, x, y);
    const int row = row_at(y);
    if (!st.contour_drawn || !inside(px, py) || row == 0) {
        for (int part = 1; part <= 3; ++part) WindowOutStatusBar(part, "");
        return;
    }
    const int slot = st.slots[static_cast<std::size_t>(row - 1)];
    const float value = Contour_Value(row, x);
    WindowOutStatusBar(1, " X= " + fixed(x, "%12.4f"));
    WindowOutStatusBar(2, std::isfinite(value) ? " I= " + fixed(value, "%12.1f") : " I= (no data)");
    std::string pattern = "Pattern: " + std::to_string(slot) + " " + hxl::Trim(g.info[static_cast<std::size_t>(slot)].prf_name);
    const float t = g.pattern[static_cast<std::size_t>(slot)].tsamp;
    if (t != 0 && std::isfinite(t)) pattern += " T= " + fixed(t, "%10.2f");
    // the time on the Y axis: from the earliest start of the rows
    if (st.by_time && static_cast<std::size_t>(row) <= st.row_time.size())
        pattern += " t= " + hxl::Trim(fixed(st.row_time[static_cast<std::size_t>(row - 1)], "%12.2f")) + " min";
    WindowOutStatusBar(3, pattern);
}

// The pattern under a click, alone in the 2D graph over the X range of the map.
void show_alone(int slot) {
    ZENDRITE_STORE& g = zendrite_param_global();
    MULTI_VIEW_STATE& st = Multi_View_State();
    const double x1 = st.fx1, x2 = st.fx2;
    st.shown_before.assign(static_cast<std::size_t>(g.nperfiles) + 1, false);
    for (int k = 1; k <= g.nperfiles; ++k) {
        st.shown_before[static_cast<std::size_t>(k)] = g.show_profile[static_cast<std::size_t>(k)];
        g.show_profile[static_cast<std::size_t>(k)] = k == slot;
    }
    st.alone_slot = slot;
    st.contour_drawn = false;
    Enter_Multi_Mode(false);
    g.log_scale = false;
    Plot_ReMake();
    g.win_xmin = static_cast<float>(x1);
    g.win_xmax = static_cast<float>(x2);
    // Y fitted to this pattern alone: the others are hidden
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(slot)];
    float lo = 0, hi = 0;
    bool any = false;
    for (int i = 1; i <= std::min({p.npts, p.x.size(), p.y.size()}); ++i) {
        if (!(p.x(i) >= x1 && p.x(i) <= x2) || !std::isfinite(p.y(i))) continue;
        lo = any ? std::min(lo, p.y(i)) : p.y(i);
        hi = any ? std::max(hi, p.y(i)) : p.y(i);
        any = true;
    }
    if (any && hi > lo) {
        g.win_ymin = lo - 0.05f * (hi - lo);
        g.win_ymax = hi + 0.05f * (hi - lo);
    }
    Plot_Again();
}

}  // namespace

void Contour_Mouse(int type, int button, float px, float py) {
    MOUSE_STATE& m = Mouse_State();
    MULTI_VIEW_STATE& st = Multi_View_State();
    if (type == MouseMove) {
        read_out(px, py);
        if (m.drag != 1) return;
        Clamp_To_Zone(px, py);
        Band_Mode_On();
        Band_Rectangle(m.start_px, m.start_py, m.last_px, m.last_py);
        Band_Rectangle(m.start_px, m.start_py, px, py);
        Band_Mode_Off();
        m.last_px = px, m.last_py = py;
        return;
    }
    if (type == MouseButDown && button == kRightButton) {
        st.zoomed = false;
        Multi_View_Again(zendrite_param_global().graph_mode);
        return;
    }
    if (type == MouseButDown && button == kLeftButton && inside(px, py)) {
        WMessageMouseMove(true);
        m.drag = 1;
        m.start_px = m.last_px = px;
        m.start_py = m.last_py = py;
        Band_Mode_On();
        Band_Rectangle(px, py, px, py);
        Band_Mode_Off();
        return;
    }
    if (type != MouseButUp || m.drag != 1) return;
    m.drag = 0;
    WMessageMouseMove(false);
    Band_Mode_On();
    Band_Rectangle(m.start_px, m.start_py, m.last_px, m.last_py);
    Band_Mode_Off();
    Clamp_To_Zone(px, py);
    double xa = 0, ya = 0, xb = 0, yb = 0;
    page_to_map(m.start_px, m.start_py, xa, ya);
    page_to_map(px, py, xb, yb);
    // a click, not a drag: the pattern of that row alone
    if (std::fabs(px - m.start_px) < 3 && std::fabs(py - m.start_py) < 3) {
        const int row = row_at(ya);
        if (row > 0) show_alone(st.slots[static_cast<std::size_t>(row - 1)]);
        return;
    }
    if (!(std::fabs(xb - xa) > 0) || !(std::fabs(yb - ya) > 0)) return;
    st.zoomed = true;
    st.x1 = std::min(xa, xb), st.x2 = std::max(xa, xb);
    st.y1 = std::min(ya, yb), st.y2 = std::max(ya, yb);
    Multi_View_Again(zendrite_param_global().graph_mode);
}

void Multi_View_Key(int key) {
    const std::string& mode = zendrite_param_global().graph_mode;
    MULTI_VIEW view = MULTI_VIEW::Contour;
    if (!Multi_View_Of_Mode(mode, view)) return;
    MOUSE_STATE& m = Mouse_State();
    MULTI_VIEW_STATE& st = Multi_View_State();
    if (view == MULTI_VIEW::Contour || view == MULTI_VIEW::Contour_Log) {
        if (key != kKeyHome) return;
        st.zoomed = false;
    } else {
        switch (key) {
        case kKeyLeft: m.rotation = std::max(m.rotation - 5, -180); break;
        case kKeyRight: m.rotation = std::min(m.rotation + 5, 180); break;
        case kKeyUp: m.elevation = std::min(m.elevation + 5, 45); break;
        case kKeyDown: m.elevation = std::max(m.elevation - 5, 0); break;
        case kKeyPageUp: st.offset = std::min(st.offset + 0.1, 5.0); break;
        case kKeyPageDown: st.offset = std::max(st.offset - 0.1, 0.0); break;
        case kKeyHome:
            m.rotation = 0, m.elevation = 22, st.offset = 0;
            st.zoomed = false;
            break;
        default: return;
        }
    }
    Multi_View_Again(mode);
}

}  // namespace zendrite

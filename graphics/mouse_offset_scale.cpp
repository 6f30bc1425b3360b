// MoveMode 3, 4 and 5: the marked profiles shifted by a line, or scaled in X or Y about a pivot.
#include <algorithm>

#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;
constexpr int kStatusPart = 4;

bool valid_slot(int k) { return k >= 1 && k <= zendrite_param_global().nperfiles; }

void remove_line() {
    MOUSE_STATE& m = Mouse_State();
    if (m.drag != 1) return;
    Band_Mode_On();
    Band_Line(m.start_px, m.start_py, m.last_px, m.last_py);
    Band_Mode_Off();
    m.drag = 0;
}

void end_mode() {
    MOUSE_STATE& m = Mouse_State();
    remove_line();
    zendrite_param_global().MoveMode = 0;
    m.pivot_chosen = false;
    WMessageMouseMove(false);
    Band_Mode_Off();
}

void follow(const WIN_MESSAGE& e) {
    MOUSE_STATE& m = Mouse_State();
    Status_Position(e.gx, e.gy, false);
    if (m.drag != 1) return;
    float px = e.gx, py = e.gy;
    Clamp_To_Zone(px, py);
    Band_Mode_On();
    Band_Line(m.start_px, m.start_py, m.last_px, m.last_py);
    Band_Line(m.start_px, m.start_py, px, py);
    m.last_px = px;
    m.last_py = py;
}

void start_line(float px, float py) {
    MOUSE_STATE& m = Mouse_State();
    WMessageMouseMove(true);
    m.drag = 1;
    m.start_px = m.last_px = px;
    m.start_py = m.last_py = py;
    Band_Mode_On();
    Band_Line(px, py, px, py);
}

void offset_release(const WIN_MESSAGE& e) {
    ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    if (m.drag != 1) return;
    float epx = e.gx, epy = e.gy;
    Clamp_To_Zone(epx, epy);
    const float spx = m.start_px, spy = m.start_py;
    end_mode();
    std::string text = "The following profiles will be shift to\rthe relative position:";
    for (int k : m.marked)
        if (valid_slot(k)) text += "\r" + std::to_string(k) + ": " + hxl::Trim(g.info[static_cast<std::size_t>(k)].prf_name);
    WMessageBox(YesNo, QuestionIcon, 1, text, "Confirmation");
    if (WInfoDialog(4) != 1) return;
    const bool log = Graphics_State().frame.log;
    float x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    Page_To_Data(spx, spy, x1, y1);
    Page_To_Data(epx, epy, x2, y2);
    const float dx = x2 - x1, dy = Window_Y(y2, log) - Window_Y(y1, log);
    for (int k : m.marked)
        if (valid_slot(k)) Shift_Profile_Drawn(g.pattern[static_cast<std::size_t>(k)], dx, dy);
    Plot_Again();
}

void scale_event(const WIN_MESSAGE& e, bool xaxis) {
    ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    const char* axis = xaxis ? "X." : "Y.";
    if (e.type == MouseButDown && e.value1 == kRightButton) {
        end_mode();
        WindowOutStatusBar(kStatusPart, "");
        return;
    }
    if (e.type == MouseMove) {
        follow(e);
        return;
    }
    float x = 0, y = 0;
    const bool inside = Page_To_Data(e.gx, e.gy, x, y);
    if (e.type == MouseButDown && e.value1 == kLeftButton) {
        if (!m.pivot_chosen) {
            if (!inside) {
                Graphics_Message("Warning, out of plotting zone.");
                return;
            }
            m.pivot_chosen = true;
            m.pivot_x = x;
            m.pivot_y = y;
            WindowOutStatusBar(kStatusPart, std::string("Select multiply factor to scaling ") + axis);
            Band_Mode_On();
            Band_Vertical(e.gx);
            Band_Mode_Off();
            return;
        }
        float ppx = 0, ppy = 0;
        Data_To_Page(m.pivot_x, m.pivot_y, ppx, ppy);
        start_line(ppx, ppy);
        m.last_x = x;  // the press point: the value that the release point replaces
        m.last_y = y;
        return;
    }
    if (e.type != MouseButUp || e.value1 != kLeftButton || m.drag != 1) return;
    float rpx = e.gx, rpy = e.gy, rx = 0, ry = 0;
    Clamp_To_Zone(rpx, rpy);
    Page_To_Data(rpx, rpy, rx, ry);
    const bool log = Graphics_State().frame.log;
    const float pivot = xaxis ? m.pivot_x : Window_Y(m.pivot_y, log);
    const float from = xaxis ? m.last_x : Window_Y(m.last_y, log);
    const float to = xaxis ? rx : Window_Y(ry, log);
    end_mode();
    WindowOutStatusBar(kStatusPart, "");
    if (from == pivot) return;
    const float factor = (to - pivot) / (from - pivot);
    for (int k : m.marked)
        if (valid_slot(k)) Scale_Profile_About(g.pattern[static_cast<std::size_t>(k)], xaxis, pivot, factor);
    Plot_Again();
}
}  // namespace

void Shift_Profile_Drawn(DIFFRACTION_PATTERN_TYPE& p, float dx, float dy) {
    for (float& v : p.x) v += dx;
    for (float& v : p.y) v += dy;
    for (float& v : p.ycalc) v += dy;
    for (float& v : p.bgr) v += dy;
    p.xmin += dx;
    p.xmax += dx;
    p.ymin += dy;
    p.ymax += dy;
}

void Scale_Profile_About(DIFFRACTION_PATTERN_TYPE& p, bool xaxis, float pivot, float factor) {
    if (xaxis) {
        for (float& v : p.x) v = pivot + (v - pivot) * factor;
        if (p.npts >= 1 && p.x.size() >= p.npts) {
            p.xmin = std::min(p.x(1), p.x(p.npts));
            p.xmax = std::max(p.x(1), p.x(p.npts));
        }
        return;
    }
    for (float& v : p.y) v = pivot + (v - pivot) * factor;
    for (float& v : p.ycalc) v = pivot + (v - pivot) * factor;
    for (float& v : p.bgr) v = pivot + (v - pivot) * factor;
    // sigma holds variances while sig_var is set
    for (float& v : p.sigma) v *= p.sig_var ? factor * factor : std::abs(factor);
    hxl::Pattern_Y_Limits(p);
}

void MouseMovement_OffsetAlign(const WIN_MESSAGE& e) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (!Same(g.graph_mode, "single") && !Same(g.graph_mode, "multi") && !Same(g.graph_mode, "multi_log"))
        Graphics_Fault("Fault /zendrite_win_root/MouseMovement_OffsetAlign/029 mode invalid for this subroutine");
    if (e.type == MouseButDown && e.value1 == kLeftButton) {
        float px = e.gx, py = e.gy;
        Clamp_To_Zone(px, py);
        start_line(px, py);
    } else if (e.type == MouseButDown && e.value1 == kRightButton) {
        end_mode();
    } else if (e.type == MouseMove) {
        follow(e);
    } else if (e.type == MouseButUp && e.value1 == kLeftButton) {
        offset_release(e);
    }
}

void MouseMovement_ScaleX(const WIN_MESSAGE& e) { scale_event(e, true); }
void MouseMovement_ScaleY(const WIN_MESSAGE& e) { scale_event(e, false); }

}  // namespace zendrite

// MoveMode 0 and every mouse event of "calculation": read-out, rubber-band zoom, undo, list edits.
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/store/zendrite_param_global.h"
#include "crystal/spectral_lines.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;

struct MARK {
    const char* colour;
    float x;
};

// Marks of the spectral lines switched on, for a mouse at the chosen element's K-alpha1:
// each line is the same reflection at that line's wavelength.
std::vector<MARK> spectral_marks(float x) {
    const MOUSE_STATE& m = Mouse_State();
    const auto& table = hxl::Spectral_Elements();
    const std::size_t e = static_cast<std::size_t>(std::clamp(m.spectral_element, 1, static_cast<int>(table.size())) - 1);
    const hxl::SPECTRAL_ELEMENT_TYPE& el = table[e];
    std::vector<MARK> marks;
    auto add = [&](bool on, const char* colour, double lambda) {
        double t = 0;
        if (on && hxl::Same_D_Two_Theta(x, el.kalpha1, lambda, t)) marks.push_back({colour, static_cast<float>(t)});
    };
    add(m.line_kalpha1, "Yellow", el.kalpha1);
    add(m.line_kalpha2, "Magenta", el.kalpha2);
    add(m.line_kbeta, "Green", el.kbeta);
    add(m.line_lalpha1, "cyan", table.back().lalpha1);  // tungsten's, the usual contamination of a tube
    return marks;
}

void draw_marks(float px) {
    float x = 0, y = 0;
    Page_To_Data(px, 0, x, y);
    for (const MARK& mk : spectral_marks(x)) {
        if (std::isnan(mk.x)) continue;
        float mx = 0, my = 0;
        Data_To_Page(mk.x, 0, mx, my);
        IGrColour(mk.colour);
        Band_Vertical(mx);
    }
}

void draw_band(float px, float py) {
    const MOUSE_STATE& m = Mouse_State();
    if (m.spectral_lines) draw_marks(px);
    else Band_Rectangle(m.start_px, m.start_py, px, py);
}

bool edits_lists(const ZENDRITE_STORE& g) {
    if (!Same(g.graph_mode, "calculation")) return false;
    if (g.calc_mode == 2) return g.peak_insert || g.peak_delete;
    if (g.calc_mode == 3) return g.bgr_insert || g.bgr_delete;
    return false;
}

void undo_zoom() {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!Same(g.graph_mode, "calculation")) {
        Plot_ReMake();
        return;
    }
    const float range = g.data_ymax - g.data_ymin;
    g.win_xmin = g.data_xmin;
    g.win_xmax = g.data_xmax;
    g.win_ymin = g.data_ymin - 0.05f * range;
    g.win_ymax = g.data_ymax + 0.05f * range;
    Plot_Again();
}

void left_press(const WIN_MESSAGE& e) {
    ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    if (edits_lists(g)) {
        float x = 0, y = 0;
        Page_To_Data(e.gx, e.gy, x, y);
        y = Window_Y(y, Graphics_State().frame.log);
        const std::string text = g.calc_mode == 2 ? Edit_Peaks(x, y) : Edit_Background(x, y);
        if (!text.empty()) Graphics_Message(text);
        else Plot_Again();
        return;
    }
    WMessageMouseMove(true);
    m.drag = 1;
    m.start_px = m.last_px = e.gx;
    m.start_py = m.last_py = e.gy;
    Band_Mode_On();
    draw_band(e.gx, e.gy);
}

void left_release(const WIN_MESSAGE& e) {
    ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    if (m.drag != 1) return;
    m.drag = 0;
    Band_Mode_On();
    draw_band(m.last_px, m.last_py);
    Band_Mode_Off();
    if (m.spectral_lines) return;
    const FRAME_LIMITS& f = Graphics_State().frame;
    // a band without width or height is a click: it can't be a window
    if (e.gx == m.start_px || e.gy == m.start_py) {
        g.win_xmin = f.xmin;
        g.win_xmax = f.xmax;
        g.win_ymin = Window_Y(f.ymin, f.log);
        g.win_ymax = Window_Y(f.ymax, f.log);
        return;
    }
    float x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    Page_To_Data(m.start_px, m.start_py, x1, y1);
    Page_To_Data(e.gx, e.gy, x2, y2);
    g.win_xmin = std::min(x1, x2);
    g.win_xmax = std::max(x1, x2);
    g.win_ymin = Window_Y(std::min(y1, y2), f.log);
    g.win_ymax = Window_Y(std::max(y1, y2), f.log);
    Plot_Again();
}

void movement(const WIN_MESSAGE& e) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    Status_Position(e.gx, e.gy, true);
    if (m.drag == 1) {
        Band_Mode_On();
        draw_band(m.last_px, m.last_py);
        draw_band(e.gx, e.gy);
        m.last_px = e.gx;
        m.last_py = e.gy;
        return;
    }
    float x = 0, y = 0;
    Page_To_Data(e.gx, e.gy, x, y);
    if (g.prf_loaded && g.show_reflexions && Plot_Settings().tick_flag) {
        bool changed = false;
        Search_PRF_Refl(x, y, changed);
    }
    const GRAPHICS_HOOKS& h = Graphics_Hooks();
    if (h.hklgen_open && h.hklgen_open() && h.search_hklgen) h.search_hklgen(x, y);
}
}  // namespace

void MouseMovement_Default(const WIN_MESSAGE& e) {
    if (e.type == MouseButDown && e.value1 == kLeftButton) left_press(e);
    else if (e.type == MouseButDown && e.value1 == kRightButton) {
        if (Mouse_State().drag == 1) {
            Band_Mode_On();
            draw_band(Mouse_State().last_px, Mouse_State().last_py);
            Band_Mode_Off();
            Mouse_State().drag = 0;
        }
        undo_zoom();
    } else if (e.type == MouseMove) movement(e);
    else if (e.type == MouseButUp && e.value1 == kLeftButton) left_release(e);
}

}  // namespace zendrite

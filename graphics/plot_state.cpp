#include "graphics/plot_state.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "calc/xspace_readout.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

GRAPHICS_STATE& Graphics_State() {
    static GRAPHICS_STATE state;
    return state;
}

GRAPHICS_HOOKS& Graphics_Hooks() {
    static GRAPHICS_HOOKS hooks;
    return hooks;
}

void Graphics_Message(const std::string& text) {
    if (Graphics_Hooks().message) {
        Graphics_Hooks().message(text);
        return;
    }
    WMessageBox(OkOnly, InformationIcon, 1, text, "Zendrite");
}

void Graphics_Fault(const std::string& text) {
    if (Graphics_Hooks().fault) Graphics_Hooks().fault(text);
    std::fprintf(stderr, "%s\n", text.c_str());
    std::fflush(stderr);
    std::_Exit(1);
}

float Frame_Y(float window_y, bool log) {
    if (!log) return window_y;
    return window_y > 1.0f ? std::log10(window_y) : 0.0f;
}

float Window_Y(float frame_y, bool log) { return log ? std::pow(10.0f, frame_y) : frame_y; }

bool Page_To_Data(float px, float py, float& x, float& y) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const FRAME_LIMITS& f = Graphics_State().frame;
    const float left = s.zone_left * static_cast<float>(s.page_width);
    const float right = s.zone_right * static_cast<float>(s.page_width);
    const float bottom = s.zone_bottom * static_cast<float>(s.page_height);
    const float top = s.zone_top * static_cast<float>(s.page_height);
    x = f.xmin + (px - left) / (right - left) * (f.xmax - f.xmin);
    y = f.ymin + (py - bottom) / (top - bottom) * (f.ymax - f.ymin);
    return px >= left && px <= right && py >= bottom && py <= top;
}

void Data_To_Page(float x, float y, float& px, float& py) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const FRAME_LIMITS& f = Graphics_State().frame;
    const float left = s.zone_left * static_cast<float>(s.page_width);
    const float right = s.zone_right * static_cast<float>(s.page_width);
    const float bottom = s.zone_bottom * static_cast<float>(s.page_height);
    const float top = s.zone_top * static_cast<float>(s.page_height);
    const float dx = f.xmax - f.xmin, dy = f.ymax - f.ymin;
    px = left + (dx != 0 ? (x - f.xmin) / dx : 0.0f) * (right - left);
    py = bottom + (dy != 0 ? (y - f.ymin) / dy : 0.0f) * (top - bottom);
}

namespace {
std::string fixed(float v, int decimals) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%12.*f", decimals, static_cast<double>(v));
    return buf;
}

// Number of the point of slot 1 nearest to x.
int point_number(float x) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles < 1) return 0;
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    if (p.npts < 1 || p.x.size() < p.npts) return 0;
    int best = 1;
    for (int i = 2; i <= p.npts; ++i)
        if (std::fabs(p.x(i) - x) < std::fabs(p.x(best) - x)) best = i;
    return best;
}
// X in every space the constants of the first shown profile allow; " X= " alone without them.
std::string x_text(float x) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int k = First_Shown_Slot();
    if (k == 0 || hxl::Same(g.xspace, "----")) return " X= " + fixed(x, 4);
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    const auto r = hxl::X_Readings(g.xspace, p.scat_var, x, p.lambda1, p.lambda2);
    return r.size() > 1 ? hxl::X_Readout_Text(r) : " X= " + fixed(x, 4);
}
}  // namespace

int First_Shown_Slot() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    for (int k = 1; k <= g.nperfiles && k <= kMaxProfiles; ++k)
        if (g.show_profile[static_cast<std::size_t>(k)]) return k;
    return 0;
}

void Status_Position(float px, float py, bool with_point_number) {
    float x = 0, y = 0;
    if (!Page_To_Data(px, py, x, y)) {
        WindowOutStatusBar(1, "");
        WindowOutStatusBar(2, "");
        if (with_point_number) WindowOutStatusBar(3, "");
        return;
    }
    WindowOutStatusBar(1, x_text(x));
    WindowOutStatusBar(2, " Y= " + fixed(y, 1));
    if (with_point_number) WindowOutStatusBar(3, " N= " + std::to_string(point_number(x)));
}

}  // namespace zendrite

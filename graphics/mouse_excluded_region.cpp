// MoveMode 2: an excluded region chosen with a band across the frame.
#include <algorithm>

#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
constexpr int kItemSelExcl = 40110;
// Fixed page positions of the band when the press lies beside the frame; they don't follow the zone.
constexpr float kBandLeft = 180.0f, kBandRight = 1020.0f;

float band_x(float px) {
    const PLOT_SETTINGS& s = Plot_Settings();
    if (px < s.zone_left * static_cast<float>(s.page_width)) return kBandLeft;
    if (px > s.zone_right * static_cast<float>(s.page_width)) return kBandRight;
    return px;
}

void leave_mode() {
    zendrite_param_global().MoveMode = 0;
    if (WMenuHasItem(kItemSelExcl)) WMenuSetState(kItemSelExcl, 2, 0);
    WMessageMouseMove(false);
}

void remove_band() {
    MOUSE_STATE& m = Mouse_State();
    if (m.drag != 1) return;
    Band_Mode_On();
    Band_Strip(m.start_px, m.last_px);
    Band_Mode_Off();
    m.drag = 0;
}

// Several profiles: the region dialog decides the targets; without it, every profile takes the region.
void add_to_profiles(float low, float high) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (Graphics_Hooks().add_excluded_region) {
        bool error = false;
        std::string text;
        Graphics_Hooks().add_excluded_region(low, high, error, text);
        if (error && !hxl::Same(text, "Cancelled")) Graphics_Message(text);
        return;
    }
    for (int k = 1; k <= g.nperfiles; ++k) {
        PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(k)];
        const std::string refusal = Excluded_Region_Refusal(k);
        if (!refusal.empty()) {
            Graphics_Message(refusal);
            continue;
        }
        ++info.nexcl;
        info.excl_low(info.nexcl) = low;
        info.excl_high(info.nexcl) = high;
    }
}

void release(const WIN_MESSAGE& e) {
    ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    if (m.drag != 1) return;
    const float left = m.start_px, right = band_x(e.gx);
    remove_band();
    leave_mode();
    float x1 = 0, x2 = 0, y = 0;
    Page_To_Data(left, e.gy, x1, y);
    Page_To_Data(right, e.gy, x2, y);
    const float low = std::min(x1, x2), high = std::max(x1, x2);
    if (g.nperfiles == 1) {
        PRF_INFO_ADD_TYPE& info = g.info[1];
        if (info.nexcl >= hxl::kMaxExcluded) {
            Graphics_Message("Profile No " + std::to_string(1) + kMsgTooManyExclMouse);
        } else {
            ++info.nexcl;
            info.excl_low(info.nexcl) = low;
            info.excl_high(info.nexcl) = high;
        }
    } else if (g.nperfiles > 1) {
        add_to_profiles(low, high);
    }
    if (Plot_Settings().excluded_limit_range) Plot_ReMake();
    else Plot_Again();
}
}  // namespace

void MouseMovement_SelExclReg(const WIN_MESSAGE& e) {
    using hxl::Same;
    const ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    if (!Same(g.graph_mode, "single") && !Same(g.graph_mode, "multi") && !Same(g.graph_mode, "multi_log"))
        Graphics_Fault("Fault /zendrite_win_root/MouseMovement_SelExclReg/028 mode invalid for this subroutine");
    if (e.type == MouseButDown && e.value1 == kLeftButton) {
        WMessageMouseMove(true);
        m.drag = 1;
        m.start_px = m.last_px = band_x(e.gx);
        Band_Mode_On();
        Band_Strip(m.start_px, m.last_px);
    } else if (e.type == MouseButDown && e.value1 == kRightButton) {
        remove_band();
        leave_mode();
    } else if (e.type == MouseMove) {
        Status_Position(e.gx, e.gy, false);
        if (m.drag != 1) return;
        Band_Mode_On();
        Band_Strip(m.start_px, m.last_px);
        m.last_px = band_x(e.gx);
        Band_Strip(m.start_px, m.last_px);
    } else if (e.type == MouseButUp && e.value1 == kLeftButton) {
        release(e);
    }
}

}  // namespace zendrite

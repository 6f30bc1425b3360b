// The wheel zooms X about the cursor; Home gives back the full range.
#include <cmath>

#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
constexpr float kWheelStep = 0.8f;  // width kept by one step in

bool zoomable() {
    using hxl::Same;
    const std::string& mode = zendrite_param_global().graph_mode;
    return Same(mode, "single") || Same(mode, "multi") || Same(mode, "multi_log") || Same(mode, "calculation");
}
}  // namespace

void Zoom_Wheel(float px, float py, int steps) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!zoomable() || steps == 0) return;
    float x = 0, y = 0;
    if (!Page_To_Data(px, py, x, y) || x < g.win_xmin || x > g.win_xmax) x = 0.5f * (g.win_xmin + g.win_xmax);
    const float factor = std::pow(kWheelStep, static_cast<float>(steps));
    const float low = x - (x - g.win_xmin) * factor, high = x + (g.win_xmax - x) * factor;
    // below float resolution the window would collapse
    if (!(high - low > 1e-5f * std::max(1.0f, std::fabs(x)))) return;
    g.win_xmin = low;
    g.win_xmax = high;
    Plot_Again();
}

void Zoom_Home() {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!zoomable() || g.nperfiles == 0) return;
    const float range = g.data_ymax - g.data_ymin;
    g.win_xmin = g.data_xmin;
    g.win_xmax = g.data_xmax;
    g.win_ymax = g.data_ymax + 0.05f * range;
    g.win_ymin = g.prf_loaded ? g.y_floor : g.data_ymin - 0.05f * range;
    Plot_Again();
}

}  // namespace zendrite

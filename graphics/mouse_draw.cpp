#include "graphics/mouse_draw.h"

#include <algorithm>

#include "app/present.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {
float pw() { return static_cast<float>(Plot_Settings().page_width); }
float ph() { return static_cast<float>(Plot_Settings().page_height); }
}  // namespace

void Band_Mode_On() {
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, pw(), ph());
    IGrPlotMode(PlotXor);
    IGrColour("Yellow");
    IGrLineWidth(1);
    IGrFillPattern(0);
}

void Band_Mode_Off() {
    IGrPlotMode(PlotNormal);
    IGrFillPattern(0);
}

void Band_Rectangle(float x1, float y1, float x2, float y2) {
    IGrFillPattern(0);
    IGrRectangle(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
}

void Band_Strip(float x1, float x2) {
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrFillPattern(3);
    IGrRectangle(std::min(x1, x2), s.zone_bottom * ph(), std::max(x1, x2), s.zone_top * ph());
    IGrFillPattern(0);
}

void Band_Line(float x1, float y1, float x2, float y2) {
    IGrMoveTo(x1, y1);
    IGrLineTo(x2, y2);
}

void Band_Vertical(float x) {
    const PLOT_SETTINGS& s = Plot_Settings();
    Band_Line(x, s.zone_bottom * ph(), x, s.zone_top * ph());
}

void Clamp_To_Zone(float& px, float& py) {
    const PLOT_SETTINGS& s = Plot_Settings();
    px = std::clamp(px, s.zone_left * pw(), s.zone_right * pw());
    py = std::clamp(py, s.zone_bottom * ph(), s.zone_top * ph());
}

}  // namespace zendrite

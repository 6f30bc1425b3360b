// The box of texts beside the mouse that names the reflections under it.
#include <algorithm>

#include "app/present.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"

namespace zendrite {

void Reflection_Box(float x, float y, const std::vector<std::string>& lines) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrPlotMode(PlotNormal);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, pw, ph);
    WGrTextFont(3, 0, 0.007f, 0.016f);
    float width = 0;
    for (const std::string& l : lines) width = std::max(width, WGrTextLength(l));
    const float line_h = 0.018f * ph, pad = 6.0f;
    const float box_h = line_h * static_cast<float>(lines.size()) + 2 * pad, box_w = width + 2 * pad;
    float px = 0, py = 0;
    Data_To_Page(x, y, px, py);
    float left = px + 15.0f;
    if (left + box_w > pw) left = std::max(0.0f, px - 15.0f - box_w);
    float top = std::min(ph, py + box_h / 2);
    if (top - box_h < 5.0f) top = box_h + 5.0f;
    IGrColourN(WRGB(255, 255, 225));
    IGrFillPattern(3);
    IGrRectangle(left, top - box_h, left + box_w, top);
    IGrFillPattern(0);
    IGrColourN(0);
    IGrRectangle(left, top - box_h, left + box_w, top);
    for (std::size_t k = 0; k < lines.size(); ++k)
        WGrTextString(left + pad, top - pad - line_h * static_cast<float>(k + 1) + 0.25f * line_h, lines[k]);
}

}  // namespace zendrite

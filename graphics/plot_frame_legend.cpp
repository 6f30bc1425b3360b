// Target at centre, the frame and the legend of the profiles.
#include <cstdio>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
void draw_target() {
    const PLOT_SETTINGS& s = Plot_Settings();
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    IGrLineWidth(1);
    IGrColourN(0);
    IGrMoveTo(0.5f * pw, s.zone_bottom * ph);
    IGrLineTo(0.5f * pw, s.zone_top * ph);
    IGrMoveTo(s.zone_left * pw, 0.5f * ph);
    IGrLineTo(s.zone_right * pw, 0.5f * ph);
    IGrFillPattern(0);
    // fixed positions of the 1200 by 800 page, not scaled with it
    IGrRectangle(500, 320, 700, 480);
    IGrRectangle(400, 240, 800, 560);
}

void draw_legend(int nperfiles) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    const float ph = static_cast<float>(s.page_height);
    const float x = Legend_Page_X(s.legend.position, s.page_width);
    const float w = static_cast<float>(s.legend.size) / 1000.0f;
    WGrTextFont(s.legend.font, s.legend.style, w, 2.0f * w);
    int line = 0;
    for (int k = 1; k <= nperfiles; ++k) {
        const PROFILE_STYLE& st = s.styles[static_cast<std::size_t>(Style_Of_Slot(k))];
        IGrColourN(st.line_colour);
        std::string name = hxl::Trim(g.info[static_cast<std::size_t>(k)].prf_name);
        // inside the frame: a long name keeps its start and its end
        if (Plot_Style() == "Publication") name = Shorten_Middle(name, 22);
        IPgLegendText("L", x, (0.8f - static_cast<float>(line) * 0.02f) * ph, name);
        ++line;
        const float chi2 = g.info[static_cast<std::size_t>(k)].chi2;
        if (g.prf_loaded && chi2 > 0.0001f) {
            char value[32];
            std::snprintf(value, sizeof value, "%.2f", static_cast<double>(chi2));
            IPgLegendText("L", x, (0.8f - static_cast<float>(line) * 0.02f) * ph, std::string("Chi2: ") + value);
            ++line;
        }
    }
}
}  // namespace

void Draw_Frame_And_Legend(int nperfiles) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    if (g.target_at_centre) draw_target();
    IGrLineWidth(Plot_Style() == "Publication" ? 1 : 2);
    IGrColourN(0);
    IPgBorder();
    IGrLineWidth(1);
    if (s.legend.position != 1 && nperfiles < kLegendLimit) draw_legend(nperfiles);
}

bool White_Picture() { return WPictureExporting() && WPictureExportOptions().white; }

int Picture_Background() { return White_Picture() ? WRGB(255, 255, 255) : Plot_Settings().background_colour; }

void Paint_Plot_Zone() {
    const PLOT_SETTINGS& s = Plot_Settings();
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    IGrPaletteBackground(Picture_Background());
    IGrAreaClear();
    // A picture written with a white background has a white plot zone too.
    IGrColourN(White_Picture() ? WRGB(255, 255, 255) : s.zone_colour);
    IGrFillPattern(3);
    IGrRectangle(s.zone_left * pw, s.zone_bottom * ph, s.zone_right * pw, s.zone_top * ph);
    IGrFillPattern(0);
}

}  // namespace zendrite

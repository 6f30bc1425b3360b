// Title, axis scales and legends of the frame.
#include <cstddef>

#include "app/present.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Is_Blank;
using hxl::Trim;


}  // namespace

std::string Plot_Title(int nperfiles) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    if (nperfiles >= 2) return s.multi_title;
    std::string title = g.pattern[static_cast<std::size_t>(nperfiles)].title;
    const std::size_t cell = title.find("CELL:");
    if (cell != std::string::npos) title.erase(cell);
    return Trim(s.title_text).size() < 5 ? Trim(title) : s.title_text;
}

namespace {

// The X legend follows the X space; before one is set the pattern's own axis text stands in.
std::string x_legend(int nperfiles) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    if (!Is_Blank(s.x_legend_text)) return s.x_legend_text;
    if (nperfiles >= 1 && !Is_Blank(X_Space_State().legend_x)) return X_Space_State().legend_x;
    if (nperfiles >= 1 && !Is_Blank(g.pattern[1].xax_text)) return Trim(g.pattern[1].xax_text);
    if (g.xspace != "----") return g.xspace;
    // A file without an axis text still names its variable.
    if (nperfiles < 1) return "";
    const std::string v = Trim(g.pattern[1].scat_var);
    if (v == "2theta") return "2theta(degrees)";
    if (v == "TOF") return "TOF(micro-seconds)";
    return v;
}
}  // namespace

void Apply_Text_Style(const TEXT_STYLE& t) {
    IGrColourN(t.colour);
    const float w = static_cast<float>(t.size) / 1000.0f;
    WGrTextFont(t.font, t.style, w, 2.0f * w);
}

void Hide_Y_Scale_Beside_Band() {
    const PLOT_SETTINGS& s = Plot_Settings();
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    float px = 0, py = 0;
    IPgXYToPage(0.0f, 0.0f, px, py);
    if (py <= s.zone_bottom * ph) return;
    IGrColourN(Picture_Background());
    IGrFillPattern(3);
    IGrRectangle(0.0f, s.zone_bottom * 0.9f * ph, s.zone_left * pw, py * 0.9f);
    IGrFillPattern(0);
}

void Draw_Axes_And_Texts(int nperfiles) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    const FRAME_LIMITS& f = Graphics_State().frame;

    // Over a second axis the title moves up; that axis writes it.
    if (s.title.position != 1 && nperfiles >= 1 && !Second_Axis_Wanted()) {
        Apply_Text_Style(s.title);
        IPgTitle(Plot_Title(nperfiles), Title_Position_Letter(s.title.position));
    }
    Apply_Text_Style(s.x_scale);
    IPgXTickPos(f.ymin);
    IPgXScale("TN");

    if (g.prf_loaded && s.hide_y_scale) Hide_Y_Scale_Beside_Band();
    Apply_Text_Style(s.y_scale);
    IPgYTickPos(f.xmin);
    // the Publication style labels a log axis in powers of ten
    IPgYScale(f.log && Plot_Style() == "Publication" ? "TNP" : "TN");

    if (s.y_legend.position != 1) {
        std::string text = s.y_legend_text;
        if (nperfiles >= 1 && !Is_Blank(g.pattern[1].yax_text) && !g.prf_loaded) text = Trim(g.pattern[1].yax_text);
        if (Is_Blank(text) && nperfiles >= 1)
            text = Is_Blank(X_Space_State().legend_y) ? "Intensity (arb. units)" : X_Space_State().legend_y;
        Apply_Text_Style(s.y_legend);
        IPgYLabel(text, Y_Legend_Position(s.y_legend.position));
    }
    if (s.x_legend.position != 1) {
        Apply_Text_Style(s.x_legend);
        IPgXLabel(x_legend(nperfiles), Title_Position_Letter(s.x_legend.position));
    }
}

}  // namespace zendrite

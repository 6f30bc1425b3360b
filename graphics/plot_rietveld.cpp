// The layers of the active Rietveld profile: calculated and difference curves, background, Bragg ticks.
#include <algorithm>
#include <vector>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/curve_draw.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;

bool holds(const std::string& text, const char* word) { return text.find(word) != std::string::npos; }

bool has_magnetic_reflections(const DIFFRACTION_PATTERN_TYPE& p, const PRF_INFO_ADD_TYPE& info, int nrefl) {
    // TOF lists run the other way; the answer is the same, only the search starts at the other end.
    if (Same(p.scat_var, "TOF")) {
        for (int i = nrefl; i >= 1; --i)
            if (holds(info.refl_label(i), "Mag.")) return true;
        return false;
    }
    for (int i = 1; i <= nrefl; ++i)
        if (holds(info.refl_label(i), "Mag.")) return true;
    return false;
}

int tick_colour(const DIFFRACTION_PATTERN_TYPE& p, const PRF_INFO_ADD_TYPE& info, int i, bool magnetic) {
    int colour = Plot_Settings().tick_colour;
    // the Publication style tells the phases apart by colour, the cycle of the profiles again
    if (Plot_Style() == "Publication" && !magnetic)
        return Publication_Colours()[static_cast<std::size_t>((info.refl_phase(i) - 1) % 12)];
    if (magnetic) {
        if (holds(info.refl_label(i), "Nuc.+Mag.")) colour = 0xFF0000;
        else if (holds(info.refl_label(i), "Mag.")) colour = 0x0000FF;
    }
    if (Same(p.scat_var, "Distance") && !holds(p.xax_text, "ixel")) colour = Bragg_Tick_Colour(info.refl_code(i));
    return colour;
}

void curve(const float* x, const float* y, int n, const CURVE_STYLE& c, bool markers) {
    CURVE_LOOK k;
    k.marker_size = c.marker_size;
    if (markers) k.marker = c.marker, k.marker_colour = c.colour;
    else k.line_type = c.line_type, k.line_colour = c.colour, k.line_width = c.line_width;
    Draw_Curve(x, y, n, false, k);
}

void draw_ticks(const DIFFRACTION_PATTERN_TYPE& p, const PRF_INFO_ADD_TYPE& info, int nrefl, float xmin, float xmax) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const bool magnetic = nrefl > 0 && has_magnetic_reflections(p, info, nrefl);
    const int rows = std::min(info.nphases, kMaxTickPhases);
    int current = -1;
    for (int i = 1; i <= nrefl; ++i) {
        const int ph = info.refl_phase(i);
        const float pos = info.refl_pos(i);
        if (ph < 1 || ph > rows || pos < xmin || pos > xmax) continue;
        const int colour = tick_colour(p, info, i, magnetic);
        if (colour != current) IGrColourN(current = colour);
        IGrMoveTo(pos, g.diff_base + g.tick_top[static_cast<std::size_t>(ph)]);
        IGrLineTo(pos, g.diff_base + g.tick_bottom[static_cast<std::size_t>(ph)]);
    }
}
}  // namespace

void Draw_Rietveld_Layers(int nperfiles, float xmin, float xmax, float ymin, float ymax) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    const int a = g.ProfilePRFactive;
    if (a < 1) Graphics_Fault("Fault /zendrite_graphics/plot_graph2d/034");
    if (a > nperfiles) Graphics_Fault("Fault /zendrite_graphics/plot_graph2d/035");
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(a)];
    const PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(a)];
    const int n = p.npts;
    const bool mono = Same(info.prf_type, "MONO");
    const bool points = n > 0 && p.x.size() >= n && p.y.size() >= n;
    const bool calc = points && p.ycalc.size() >= n;
    const int nrefl = std::min({info.nrefl, info.refl_pos.size(), info.refl_phase.size(), info.refl_label.size(),
                                info.refl_code.size()});

    if (g.show_ycalc && calc) curve(p.x.data(), p.ycalc.data(), n, s.calc_style, mono);
    if (g.show_ydiff && calc) {
        std::vector<float> d(static_cast<std::size_t>(n));
        const int nexcl = std::min(info.nexcl, hxl::kMaxExcluded);
        for (int i = 1; i <= n; ++i) {
            float v = p.y(i) - p.ycalc(i);
            // excluded points draw a flat line at the base
            if (!mono)
                for (int r = 1; r <= nexcl; ++r)
                    if (p.x(i) >= info.excl_low(r) && p.x(i) <= info.excl_high(r)) v = 0;
            d[static_cast<std::size_t>(i - 1)] = v + g.diff_base;
        }
        curve(p.x.data(), d.data(), n, s.diff_style, mono);
    }
    if (g.show_background && points && p.bgr.size() >= n) curve(p.x.data(), p.bgr.data(), n, s.diff_style, false);

    IPgToGrUnits();
    IGrUnits(xmin, ymin, xmax, ymax);
    IGrColourN(s.tick_colour);
    IGrLineWidth(s.tick_width);
    if (g.show_reflexions && info.nphases > 0) draw_ticks(p, info, nrefl, xmin, xmax);
    IGrLineWidth(1);
}

}  // namespace zendrite

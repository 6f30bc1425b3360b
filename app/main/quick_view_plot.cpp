// Plot_Quick_View: the file on view drawn as the main plot draws a profile file, from the
// Quick View's own records, with the settings (colours, styles, page) of the main plot.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "app/main/quick_view.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;
using hxl::Trim;

bool holds(const std::string& text, const char* word) { return text.find(word) != std::string::npos; }

// The colour of tick i: magnetic reflections and coded reflections as in the main plot.
int tick_colour(const QUICK_VIEW_TYPE& qv, const PLOT_SETTINGS& s, int i, bool magnetic) {
    const hxl::PRF_INFO_ADD_TYPE& info = qv.qv_info;
    int colour = s.tick_colour;
    if (magnetic && info.refl_label.size() >= i) {
        if (holds(info.refl_label(i), "Nuc.+Mag.")) colour = 0xFF0000;
        else if (holds(info.refl_label(i), "Mag.")) colour = 0x0000FF;
    }
    if (Same(qv.qv_pattern.scat_var, "Distance") && !holds(qv.qv_pattern.xax_text, "ixel") && info.refl_code.size() >= i)
        colour = Bragg_Tick_Colour(info.refl_code(i));
    return colour;
}


void axis_texts(const hxl::DIFFRACTION_PATTERN_TYPE& p, std::string& x_text, std::string& y_text) {
    const std::string v = Trim(p.scat_var);
    y_text = "Intensity (arb. units)";
    if (v == "2theta") x_text = "2Theta";
    else if (v == "Omega") x_text = "Omega";
    else if (v == "TOF") x_text = "TOF (usec)";
    else if (v == "Energy") x_text = "Energy (KeV)";
    else {
        x_text = Trim(p.xax_text);
        if (v == "mono") y_text = "Fcalc. - Fobs.";
    }
}

void curve(const float* x, const float* y, int n, const CURVE_STYLE& c, bool markers) {
    IPgStartGraph(PgXY, 1, n);
    if (markers) {
        IPgStyle(1, PgNoFill, c.marker, c.colour, c.line_type, c.line_width, c.marker_size);
        IPgXYMarkers(x, y, n);
    } else {
        IPgStyle(1, PgLine, 1, c.colour, c.line_type, c.line_width, c.marker_size);
        IPgXYLine(x, y, n);
    }
}

bool excluded(const hxl::PRF_INFO_ADD_TYPE& info, float x) {
    const int n = std::min(info.nexcl, hxl::kMaxExcluded);
    for (int r = 1; r <= n; ++r)
        if (x >= info.excl_low(r) && x <= info.excl_high(r)) return true;
    return false;
}

// Observed points and line, then the points of the excluded regions in their own colour.
void observed(const QUICK_VIEW_TYPE& qv, const PLOT_SETTINGS& s, bool mono) {
    const hxl::DIFFRACTION_PATTERN_TYPE& p = qv.qv_pattern;
    const int n = p.npts;
    const PROFILE_STYLE& st = s.styles[1];
    IPgStartGraph(PgXY, 1, n);
    IPgStyle(1, PgNoFill, st.marker, st.marker_colour, st.line_type, st.line_width, st.marker_size);
    IPgXYMarkers(p.x.data(), p.y.data(), n);
    if (mono && p.sigma.size() >= n) {
        std::vector<float> low(static_cast<std::size_t>(n)), high(static_cast<std::size_t>(n));
        for (int i = 1; i <= n; ++i) {
            // sigma holds variances while sig_var is set
            const float sd = p.sig_var ? std::sqrt(std::max(p.sigma(i), 0.0f)) : p.sigma(i);
            low[static_cast<std::size_t>(i - 1)] = p.y(i) - sd;
            high[static_cast<std::size_t>(i - 1)] = p.y(i) + sd;
        }
        IPgStyle(1, PgLine, 1, st.line_colour, 0, 1, st.marker_size);
        IPgErrorBars(p.x.data(), low.data(), high.data(), n);
    }
    if (st.line_type != -1 && !mono) {
        IPgStyle(1, PgLine, 1, st.line_colour, st.line_type, st.line_width, st.marker_size);
        IPgXYLine(p.x.data(), p.y.data(), n);
    }
    if (!s.excluded_drawn) return;
    const int nexcl = std::min(qv.qv_info.nexcl, hxl::kMaxExcluded);
    for (int r = 1; r <= nexcl; ++r) {
        int first = 0, last = 0;
        for (int i = 1; i <= n; ++i) {
            if (p.x(i) < qv.qv_info.excl_low(r) || p.x(i) > qv.qv_info.excl_high(r)) continue;
            if (first == 0) first = i;
            last = i;
        }
        if (first == 0 || last == first) continue;
        const int count = last - first + 1;
        IPgStartGraph(PgXY, 1, count);
        IPgStyle(1, PgNoFill, st.marker, s.excluded_colour, 0, 1, st.marker_size);
        IPgXYMarkers(&p.x(first), &p.y(first), count);
        if (st.line_type != -1 && !mono) {
            IPgStyle(1, PgLine, 1, s.excluded_colour, st.line_type, st.line_width, st.marker_size);
            IPgXYLine(&p.x(first), &p.y(first), count);
        }
    }
}

// Calculated, difference and background curves, and the rows of Bragg ticks.
void rietveld_layers(const QUICK_VIEW_TYPE& qv, const PLOT_SETTINGS& s, bool mono, float xmin, float xmax,
                     float ymin, float ymax) {
    const ZENDRITE_STORE& g = zendrite_param_global();  // read only: which layers are shown
    const hxl::DIFFRACTION_PATTERN_TYPE& p = qv.qv_pattern;
    const hxl::PRF_INFO_ADD_TYPE& info = qv.qv_info;
    const int n = p.npts;
    const bool calc = p.ycalc.size() >= n;
    if (g.show_ycalc && calc) curve(p.x.data(), p.ycalc.data(), n, s.calc_style, mono);
    if (g.show_ydiff && calc) {
        std::vector<float> d(static_cast<std::size_t>(n));
        for (int i = 1; i <= n; ++i) {
            // excluded points draw a flat line at the base
            const float v = !mono && excluded(info, p.x(i)) ? 0.0f : p.y(i) - p.ycalc(i);
            d[static_cast<std::size_t>(i - 1)] = v + qv.diff_base;
        }
        curve(p.x.data(), d.data(), n, s.diff_style, mono);
    }
    if (g.show_background && p.bgr.size() >= n) curve(p.x.data(), p.bgr.data(), n, s.diff_style, false);

    IPgToGrUnits();
    IGrUnits(xmin, ymin, xmax, ymax);
    IGrLineWidth(s.tick_width);
    const int rows = static_cast<int>(qv.tick_top.size());
    const int nrefl = std::min({info.nrefl, info.refl_pos.size(), info.refl_phase.size()});
    if (g.show_reflexions && rows > 0) {
        bool magnetic = false;
        for (int i = 1; i <= std::min(nrefl, info.refl_label.size()) && !magnetic; ++i)
            magnetic = holds(info.refl_label(i), "Mag.");
        int current = -1;
        for (int i = 1; i <= nrefl; ++i) {
            const int ph = info.refl_phase(i);
            const float pos = info.refl_pos(i);
            if (ph < 1 || ph > rows || pos < xmin || pos > xmax) continue;
            const int colour = tick_colour(qv, s, i, magnetic);
            if (colour != current) IGrColourN(current = colour);
            IGrMoveTo(pos, qv.diff_base + qv.tick_top[static_cast<std::size_t>(ph - 1)]);
            IGrLineTo(pos, qv.diff_base + qv.tick_bottom[static_cast<std::size_t>(ph - 1)]);
        }
    }
    IGrLineWidth(1);
}

void axes(const QUICK_VIEW_TYPE& qv, const PLOT_SETTINGS& s, float xmin, float ymin) {
    const hxl::DIFFRACTION_PATTERN_TYPE& p = qv.qv_pattern;
    std::string x_text, y_text;
    axis_texts(p, x_text, y_text);
    if (s.title.position != 1) {
        std::string title = p.title;
        if (const std::size_t cell = title.find("CELL:"); cell != std::string::npos) title.erase(cell);
        if (Trim(s.title_text).size() >= 5) title = s.title_text;  // the user's title, as in the main plot
        Apply_Text_Style(s.title);
        IPgTitle(Trim(title), Title_Position_Letter(s.title.position));
    }
    Apply_Text_Style(s.x_scale);
    IPgXTickPos(ymin);
    IPgXScale("TN");
    if (s.hide_y_scale) Hide_Y_Scale_Beside_Band();
    Apply_Text_Style(s.y_scale);
    IPgYTickPos(xmin);
    IPgYScale("TN");
    if (s.y_legend.position != 1) {
        Apply_Text_Style(s.y_legend);
        IPgYLabel(y_text, Y_Legend_Position(s.y_legend.position));
    }
    if (s.x_legend.position != 1) {
        Apply_Text_Style(s.x_legend);
        IPgXLabel(x_text, Title_Position_Letter(s.x_legend.position));
    }
}

void legend(const QUICK_VIEW_TYPE& qv, const PLOT_SETTINGS& s) {
    const float ph = static_cast<float>(s.page_height);
    IGrLineWidth(2);
    IGrColourN(0);
    IPgBorder();
    IGrLineWidth(1);
    if (s.legend.position == 1) return;
    const float x = Legend_Page_X(s.legend.position, s.page_width);
    const float w = static_cast<float>(s.legend.size) / 1000.0f;
    WGrTextFont(s.legend.font, s.legend.style, w, 2.0f * w);
    IGrColourN(s.styles[1].line_colour);
    IPgLegendText("L", x, 0.8f * ph, Trim(qv.qv_info.prf_name));
    if (qv.qv_info.chi2 > 0.0001f) {
        char value[32];
        std::snprintf(value, sizeof value, "%.2f", static_cast<double>(qv.qv_info.chi2));
        IPgLegendText("L", x, 0.78f * ph, std::string("Chi2: ") + value);
    }
}

}  // namespace

void Plot_Quick_View(float xmin, float xmax, float ymin, float ymax) {
    QUICK_VIEW_TYPE& qv = Quick_View();
    const PLOT_SETTINGS& s = Plot_Settings();
    const hxl::DIFFRACTION_PATTERN_TYPE& p = qv.qv_pattern;
    if (qv.qv_window == 0) return;
    Open_Up_Range(xmin, xmax);
    Open_Up_Range(ymin, ymax);
    qv.qv_xmin = xmin, qv.qv_xmax = xmax, qv.qv_ymin = ymin, qv.qv_ymax = ymax;
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    qv.page_w = pw, qv.page_h = ph;
    qv.zone_left = s.zone_left, qv.zone_bottom = s.zone_bottom, qv.zone_right = s.zone_right, qv.zone_top = s.zone_top;
    qv.band = false;

    WindowSelect(qv.qv_window);
    if (qv.bitmap) WBitmapDestroy(qv.bitmap);
    IGrPaletteBackground(s.background_colour);
    WBitmapCreate(qv.bitmap, std::max(WInfoWindow(1), 1), std::max(WInfoWindow(2), 1));
    IGrSelect(2, qv.bitmap);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, pw, ph);
    IPgArea(s.zone_left, s.zone_bottom, s.zone_right, s.zone_top);
    IGrPlotMode(PlotNormal);
    Paint_Plot_Zone();

    IPgUnits(xmin, ymin, xmax, ymax);
    const bool ok = p.npts > 0 && p.x.size() >= p.npts && p.y.size() >= p.npts;
    const bool mono = Same(qv.qv_info.prf_type, "MONO");
    if (ok) observed(qv, s, mono);
    IGrLineWidth(1);
    axes(qv, s, xmin, ymin);
    if (ok) rietveld_layers(qv, s, mono, xmin, xmax, ymin, ymax);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, pw, ph);
    legend(qv, s);

    IGrSelect(1, qv.qv_window);
    WBitmapPut(qv.bitmap, 0);
    qv.drawn = true;
}

void Quick_View_Page_To_Data(float px, float py, float& x, float& y) {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    const float left = qv.zone_left * qv.page_w, right = qv.zone_right * qv.page_w;
    const float bottom = qv.zone_bottom * qv.page_h, top = qv.zone_top * qv.page_h;
    x = qv.qv_xmin + (px - left) / (right - left) * (qv.qv_xmax - qv.qv_xmin);
    y = qv.qv_ymin + (py - bottom) / (top - bottom) * (qv.qv_ymax - qv.qv_ymin);
}

void Quick_View_Data_To_Page(float x, float y, float& px, float& py) {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    const float left = qv.zone_left * qv.page_w, right = qv.zone_right * qv.page_w;
    const float bottom = qv.zone_bottom * qv.page_h, top = qv.zone_top * qv.page_h;
    px = left + (x - qv.qv_xmin) / (qv.qv_xmax - qv.qv_xmin) * (right - left);
    py = bottom + (y - qv.qv_ymin) / (qv.qv_ymax - qv.qv_ymin) * (top - bottom);
}

}  // namespace zendrite

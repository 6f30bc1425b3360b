// The shown profiles as rows, the checks, the page of the views and the entry to their modes.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/present.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

using hxl::Same;

MULTI_VIEW_STATE& Multi_View_State() {
    static MULTI_VIEW_STATE state;
    return state;
}

bool Multi_View_From_Name(const std::string& name, MULTI_VIEW& view) {
    if (name == "contour") view = MULTI_VIEW::Contour;
    else if (name == "contour-log") view = MULTI_VIEW::Contour_Log;
    else if (name == "stack") view = MULTI_VIEW::Stack;
    else if (name == "surface") view = MULTI_VIEW::Surface;
    else return false;
    return true;
}

std::string Multi_View_Mode(MULTI_VIEW view) {
    switch (view) {
    case MULTI_VIEW::Contour: return "graph2dcontour";
    case MULTI_VIEW::Contour_Log: return "graph2dcontour_log";
    case MULTI_VIEW::Stack: return "graph3d";
    case MULTI_VIEW::Surface: return "graph3dsurf";
    }
    return "";
}

bool Multi_View_Of_Mode(const std::string& graph_mode, MULTI_VIEW& view) {
    for (MULTI_VIEW v : {MULTI_VIEW::Contour, MULTI_VIEW::Contour_Log, MULTI_VIEW::Stack, MULTI_VIEW::Surface})
        if (Same(graph_mode, Multi_View_Mode(v))) {
            view = v;
            return true;
        }
    return false;
}

namespace {
bool shown(int slot) { return zendrite_param_global().show_profile[static_cast<std::size_t>(slot)]; }

// The map of the last redraw. Turning, rotating or repainting a view of 10^7 points must
// not resample them each time: the map is built again only when the rows (which slots, where
// their arrays lie, how many points), the X window, the width or the store's content changed.
// The content counts as changed on every redraw that follows a command (the plot's hook) and
// on entering a view.
struct MAP_CACHE {
    unsigned long content = 0;  // Multi_Data_Changed count the rows were taken at (from 1)
    std::vector<int> slots;
    std::vector<hxl::MAP_ROW_TYPE> rows;
    double rows_xlo = 0, rows_xhi = 1;
    bool rows_ok = false;
    double x1 = 0, x2 = 0;
    int max_cols = 0;
    std::shared_ptr<const hxl::MULTI_MAP_TYPE> map;  // of these rows; none until built
    float zmin = 0, zmax = 0, zpos = 0;
    bool any = false;
};
unsigned long content_count = 1;
MAP_CACHE& map_cache() {
    static MAP_CACHE cache;
    return cache;
}

bool same_rows(const MAP_CACHE& c, const std::vector<int>& slots, const std::vector<hxl::MAP_ROW_TYPE>& rows) {
    if (c.content != content_count || c.slots != slots || c.rows.size() != rows.size()) return false;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (c.rows[i].x != rows[i].x || c.rows[i].y != rows[i].y || c.rows[i].n != rows[i].n) return false;
    return true;
}
}  // namespace

void Multi_Data_Changed() { ++content_count; }

std::string Multi_View_Refusal() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::clamp(g.nperfiles, 0, kMaxProfiles);
    int count = 0, first = 0;
    for (int k = 1; k <= n; ++k) {
        if (!shown(k)) continue;
        ++count;
        if (first == 0) first = k;
        const std::string& type = g.info[static_cast<std::size_t>(k)].prf_type;
        if (Same(type, "PRF") || Same(type, "MONO") || Same(type, "RIETV"))
            return "Profile " + std::to_string(k) +
                   " comes from a Rietveld profile file: these graphs take observed patterns only";
        if (!Same(g.pattern[static_cast<std::size_t>(k)].scat_var, g.pattern[static_cast<std::size_t>(first)].scat_var))
            return "The profiles shown are not in one X space (profile " + std::to_string(k) + " is in " +
                   hxl::Trim(g.pattern[static_cast<std::size_t>(k)].scat_var) + ")";
    }
    if (count < 2) return "At least two profiles must be shown for this graph";
    return "";
}

MULTI_ROWS_TYPE Shown_Rows() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    MULTI_ROWS_TYPE r;
    const int n = std::clamp(g.nperfiles, 0, kMaxProfiles);
    std::vector<double> temps, times;
    bool all_temps = true, all_times = true;
    for (int k = 1; k <= n; ++k) {
        if (!shown(k)) continue;
        const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
        hxl::MAP_ROW_TYPE row;
        row.n = std::max(0, std::min({p.npts, p.x.size(), p.y.size()}));
        row.x = p.x.data();
        row.y = p.y.data();
        r.slots.push_back(k);
        r.rows.push_back(row);
        r.values.push_back(k);
        temps.push_back(p.tsamp);
        all_temps = all_temps && p.tsamp != 0 && std::isfinite(p.tsamp);
        times.push_back(p.acq_time);
        all_times = all_times && std::isfinite(p.acq_time);
    }
    std::vector<double> low, high;
    if (all_temps && temps.size() >= 2 && hxl::Row_Bands(temps, low, high)) {
        r.values = temps;
        r.by_temperature = true;
    } else if (all_times && times.size() >= 2) {
        const double first = *std::min_element(times.begin(), times.end());
        for (double& t : times) t = (t - first) / 60;
        if (hxl::Row_Bands(times, low, high)) r.values = times, r.by_time = true;
    }
    MAP_CACHE& c = map_cache();
    if (!same_rows(c, r.slots, r.rows)) {
        c.rows_ok = hxl::Map_X_Range(r.rows, c.rows_xlo, c.rows_xhi);
        c.content = content_count, c.slots = r.slots, c.rows = r.rows;
        c.map.reset();
    }
    if (c.rows_ok) r.xlo = c.rows_xlo, r.xhi = c.rows_xhi;
    else r.xlo = 0, r.xhi = 1;
    return r;
}

const char* Row_Axis_Name(const MULTI_ROWS_TYPE& rows) {
    return rows.by_temperature ? "Sample temperature" : rows.by_time ? "Time (min)" : "Pattern number";
}

MULTI_FRAME_TYPE Multi_Frame(int width, int height) {
    const PLOT_SETTINGS& s = Plot_Settings();
    MULTI_FRAME_TYPE f;
    f.left = s.zone_left * static_cast<float>(s.page_width);
    f.right = s.zone_right * static_cast<float>(s.page_width);
    f.bottom = s.zone_bottom * static_cast<float>(s.page_height);
    f.top = s.zone_top * static_cast<float>(s.page_height);
    f.px_width = std::max(1, static_cast<int>(std::lround((s.zone_right - s.zone_left) * static_cast<float>(width))));
    f.px_height = std::max(1, static_cast<int>(std::lround((s.zone_top - s.zone_bottom) * static_cast<float>(height))));
    return f;
}

void Begin_Multi_Page() {
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrPlotMode(PlotNormal);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, static_cast<float>(s.page_width), static_cast<float>(s.page_height));
    Paint_Plot_Zone();
}

std::string Multi_X_Legend(int first_slot) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    if (!hxl::Is_Blank(s.x_legend_text)) return s.x_legend_text;
    if (!hxl::Is_Blank(X_Space_State().legend_x)) return X_Space_State().legend_x;
    if (first_slot < 1) return "";
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(first_slot)];
    if (!hxl::Is_Blank(p.xax_text)) return hxl::Trim(p.xax_text);
    return hxl::Trim(p.scat_var);
}

void Multi_Text(float x, float y, const std::string& text, int align, float size, float degrees) {
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrColourN(s.x_scale.colour);
    WGrTextFont(1, 0, size / 1000.0f, 2.0f * size / 1000.0f);
    WGrTextOrientation(degrees);
    if (align < 0) WGrTextString(x, y, text);
    else if (align == 0) WGrTextCentre(x, y, text);
    else WGrTextRight(x, y, text);
    WGrTextOrientation(0);
}

std::string Tick_Text(double value, double step) {
    int dec = step >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
    dec = std::clamp(dec, 0, 8);
    if (std::fabs(value) < step * 1e-6) value = 0;
    char buf[64];
    const double a = std::fabs(value);
    if (a != 0 && (a >= 1e6 || a < 1e-4)) std::snprintf(buf, sizeof buf, "%.3g", value);
    else std::snprintf(buf, sizeof buf, "%.*f", dec, value);
    return buf;
}

hxl::VIEW_3D_TYPE Present_3D_View() {
    hxl::VIEW_3D_TYPE v;
    v.rotation = Mouse_State().rotation;
    v.elevation = Mouse_State().elevation;
    v.offset = Multi_View_State().offset;
    v.height = 0.6;  // room for the depth of the series under the peaks
    return v;
}

bool Window_Map(const MULTI_ROWS_TYPE& rows, int max_cols, std::shared_ptr<const hxl::MULTI_MAP_TYPE>& map, float& zmin, float& zmax,
                float& lowest_positive) {
    const MULTI_VIEW_STATE& st = Multi_View_State();
    double x1 = rows.xlo, x2 = rows.xhi;
    if (st.zoomed && st.x2 > st.x1) x1 = st.x1, x2 = st.x2;
    MAP_CACHE& c = map_cache();
    const bool kept_rows = same_rows(c, rows.slots, rows.rows);
    if (kept_rows && c.map && c.x1 == x1 && c.x2 == x2 && c.max_cols == max_cols) {
        map = c.map;
        zmin = c.zmin, zmax = c.zmax, lowest_positive = c.zpos;
        return c.any;
    }
    // a new map, so that a view still holding the old one keeps it
    auto fresh = std::make_shared<hxl::MULTI_MAP_TYPE>();
    hxl::Build_Multi_Map(rows.rows, x1, x2, max_cols, *fresh);
    const bool any = hxl::Map_Z_Range(*fresh, zmin, zmax, lowest_positive);
    map = std::move(fresh);
    if (kept_rows) c.map = map, c.x1 = x1, c.x2 = x2, c.max_cols = max_cols, c.zmin = zmin, c.zmax = zmax, c.zpos = lowest_positive, c.any = any;
    return any;
}

void Start_Multi_Page(int width, int height, const MULTI_ROWS_TYPE& rows, MULTI_PAGE_TYPE& page) {
    page.f = Multi_Frame(width, height);
    Begin_Multi_Page();
    page.any = Window_Map(rows, page.f.px_width, page.map, page.zmin, page.zmax, page.zpos);
}

bool Draw_Multi_View(MULTI_VIEW view, int width, int height, std::string& message) {
    message = Multi_View_Refusal();
    if (!message.empty()) return false;
    const MULTI_ROWS_TYPE rows = Shown_Rows();
    switch (view) {
    case MULTI_VIEW::Contour: Draw_Contour(false, width, height, rows); break;
    case MULTI_VIEW::Contour_Log: Draw_Contour(true, width, height, rows); break;
    case MULTI_VIEW::Stack: Draw_Stack(width, height, rows); break;
    case MULTI_VIEW::Surface: Draw_Surface(width, height, rows); break;
    }
    return true;
}

void Show_Rotation_Elevation() {
    WindowOutStatusBar(3, " Rotation : " + std::to_string(Mouse_State().rotation));
    WindowOutStatusBar(4, " Elevation : " + std::to_string(Mouse_State().elevation));
}

void Multi_View_Again(const std::string& graph_mode) {
    MULTI_VIEW view = MULTI_VIEW::Contour;
    if (!Multi_View_Of_Mode(graph_mode, view)) return;
    GRAPHICS_STATE& gs = Graphics_State();
    WindowSelect(kRootWindow);
    const int w = std::max(WInfoWindow(1), 1), h = std::max(WInfoWindow(2), 1);
    if (gs.bitmap != 0) WBitmapDestroy(gs.bitmap);
    WBitmapCreate(gs.bitmap, w, h);
    IGrSelect(2, gs.bitmap);
    std::string message;
    if (!Draw_Multi_View(view, w, h, message)) {
        // the store changed under the view (profiles hidden or deleted): say so on the picture
        Begin_Multi_Page();
        const PLOT_SETTINGS& s = Plot_Settings();
        Multi_Text(0.5f * static_cast<float>(s.page_width), 0.5f * static_cast<float>(s.page_height), "ERROR: " + message, 0, 14);
        Multi_View_State().contour_drawn = false;
    }
    IGrSelect(1, kRootWindow);
    WBitmapPut(gs.bitmap, 0);
    if (view == MULTI_VIEW::Stack || view == MULTI_VIEW::Surface) Show_Rotation_Elevation();
}

void Restore_Shown_Before() {
    ZENDRITE_STORE& g = zendrite_param_global();
    MULTI_VIEW_STATE& st = Multi_View_State();
    if (st.alone_slot == 0) return;
    bool still = st.alone_slot <= g.nperfiles && shown(st.alone_slot);
    for (int k = 1; k <= g.nperfiles && still; ++k) still = k == st.alone_slot || !shown(k);
    if (still)
        for (int k = 1; k <= g.nperfiles && static_cast<std::size_t>(k) < st.shown_before.size(); ++k)
            g.show_profile[static_cast<std::size_t>(k)] = st.shown_before[static_cast<std::size_t>(k)];
    st.alone_slot = 0;
    st.shown_before.clear();
}

bool Enter_Multi_View(MULTI_VIEW view, std::string& message) {
    Multi_Data_Changed();
    Restore_Shown_Before();
    message = Multi_View_Refusal();
    if (!message.empty()) return false;
    ZENDRITE_STORE& g = zendrite_param_global();
    MULTI_VIEW_STATE& st = Multi_View_State();
    std::string mode = Multi_View_Mode(view);
    // a new view starts unzoomed; the 3D views start from their fixed eye
    if (!Same(g.graph_mode, mode)) st.zoomed = false;
    if (view == MULTI_VIEW::Stack || view == MULTI_VIEW::Surface) {
        Mouse_State().rotation = 0;
        Mouse_State().elevation = 22;
    }
    g.graph_mode = mode;
    g.MoveMode = 0;
    g.log_scale = view == MULTI_VIEW::Contour_Log;
    if (Store_Hooks().after_mode_change) Store_Hooks().after_mode_change();
    Multi_View_Again(mode);
    return true;
}

}  // namespace zendrite

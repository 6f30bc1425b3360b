#include "app/main/preferences.h"

#include <fstream>
#include <sstream>

#include "app/main/configuration.h"
#include "app/present.h"
#include "support/fixed_text.h"

namespace zendrite {

PREFERENCES_TYPE& Preferences() {
    static PREFERENCES_TYPE p = [] {
        PREFERENCES_TYPE d;
        Set_Default_Preferences(d);
        return d;
    }();
    return p;
}

void Set_Default_Preferences(PREFERENCES_TYPE& p) {
    const CONFIGURATION_TYPE& c = Configuration();
    PREFERENCES_TYPE d;
    d.title_bg = WRGB(0, 0, 96);
    d.title_fg = WRGB(255, 255, 160);
    d.corvane_dir = c.corvane_dir;
    d.text_editor = c.text_editor;
    d.web_browser = c.web_browser;
    d.pdf_viewer = c.pdf_viewer;
    d.compressor = c.compressor;
    d.cmd_prefix = c.cmd_prefix;
    d.corvane_exe = c.prog_corvane;
    const int cycle[6] = {255, 0xFF0000, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFFFF00};
    for (int i = 1; i <= 12; ++i) {
        PROFILE_STYLE_TYPE& s = d.style[static_cast<std::size_t>(i)];
        s = PROFILE_STYLE_TYPE{};
        s.line_colour = s.marker_colour = cycle[(i - 1) % 6];
    }
    d.multi_title = "Plot multi file";
    d.background = WRGB(150, 200, 150);
    d.zone_colour = WRGB(235, 235, 235);
    d.excluded_colour = WRGB(192, 192, 192);
    d.excluded_drawn = 1;
    d.title = {WRGB(128, 0, 64), 3, 1, 1, 20};
    d.xlegend = {WRGB(0, 64, 128), 3, 1, 1, 15};
    d.ylegend = {WRGB(0, 64, 128), 7, 1, 1, 15};
    d.xscale = {0, 3, 1, 1, 12};
    d.yscale = {0, 3, 1, 1, 12};
    d.calc_curve = {0, 0, 1, 2, 5};
    d.diff_curve = {WRGB(0, 0, 255), 0, 1, 2, 5};
    d.tick_colour = WRGB(0, 128, 0);
    d.tick_width = 1;
    d.hide_yscale = 1;
    d.excluded_limit_range = 0;
    d.contour_title = "Plot 2D contour multi file";
    d.contour_colours = {WRGB(214, 214, 214), WRGB(255, 255, 202), WRGB(50, 50, 235), WRGB(235, 50, 50)};
    d.contour_fill = 1, d.contour_levels = 20, d.contour_ncolours = 30;
    d.contour_table.clear();
    for (int i = 0; i < d.contour_ncolours; ++i) {
        const int t = i * 255 / (d.contour_ncolours - 1);
        d.contour_table.push_back(WRGB(t, 0, 255 - t));
    }
    d.graph3d_title = "Plot 3D multi file";
    d.graph3d_colour = WRGB(220, 200, 253);
    d.surface_title = "Plot 3D surface multi file";
    d.surface_colours = {WRGB(193, 193, 132), WRGB(198, 255, 198), WRGB(128, 0, 0), WRGB(255, 255, 0)};
    d.surface_shading = 1;
    d.qv_colours = {WRGB(164, 202, 246), WRGB(255, 255, 255)};
    d.qv_colour3 = WRGB(192, 192, 192);
    d.qv_flag = 1;
    p = d;
}

void Set_Default_Preferences() { Set_Default_Preferences(Preferences()); }

namespace {

struct Reader {
    std::ifstream in;
    bool ok = true;
    bool text(std::string& s) {
        if (!ok || !std::getline(in, s)) return ok = false;
        if (!s.empty() && s.back() == '\r') s.pop_back();
        return true;
    }
    bool line() {
        std::string s;
        return text(s);
    }
    template <class... T>
    bool ints(T&... v) {
        std::string s;
        if (!text(s)) return false;
        for (char& ch : s)
            if (ch == ',') ch = ' ';
        std::istringstream is(s);
        ((is >> v), ...);
        return ok = !is.fail();
    }
    bool table(std::vector<int>& v, int n) {
        std::string s;
        if (!text(s)) return false;
        std::istringstream is(s);
        v.assign(static_cast<std::size_t>(std::max(n, 0)), 0);
        for (int& x : v) is >> x;
        return ok = !is.fail();
    }
};

}  // namespace

void Read_Preferences(const std::string& file, PREFERENCES_TYPE& out, bool& error, std::string& message) {
    error = true;
    Reader r;
    r.in.open(file);
    if (!r.in) {
        message = "Unable to read setting file";
        return;
    }
    PREFERENCES_TYPE p = out;
    std::string s;
    if (!r.line()) return void(message = "Error reading line 1 of header");
    if (!r.line()) return void(message = "Error reading line 2 of header");
    if (!r.line()) return void(message = "Error reading line 1 of main window preferences values");
    if (!r.ints(p.win_width, p.win_height, p.title_bg, p.title_fg, p.first_flag))
        return void(message = "Error reading main window preferences values");
    if (!r.line()) return void(message = "Error reading title section environment");
    if (!(r.ints(p.always_save_context, p.internal_editor) && r.text(p.corvane_dir) && r.text(p.text_editor) &&
          r.text(p.web_browser) && r.text(p.pdf_viewer) && r.text(p.cif_viewer) && r.text(p.ps_viewer) &&
          r.text(p.compressor) && r.text(p.corvane_exe) && r.text(p.cmd_prefix)))
        return void(message = "Error reading enviroment preferences values");
    if (!r.line()) return void(message = "Error reading title section profiles data");
    for (int i = 1; i <= 12; ++i) {
        PROFILE_STYLE_TYPE& st = p.style[static_cast<std::size_t>(i)];
        if (!r.ints(st.line_colour, st.line_type, st.line_width, st.marker_colour, st.marker, st.marker_size,
                    st.reserved))
            return void(message = "Error reading setting of profiles data");
    }
    if (!r.line()) return void(message = "Error reading title section graphic 2D");
    auto ts = [&r](TEXT_STYLE_TYPE& t) { return r.ints(t.colour, t.position, t.font, t.style, t.size); };
    if (!(r.text(p.single_title) && r.text(p.multi_title) &&
          r.ints(p.background, p.zone_colour, p.excluded_colour, p.excluded_drawn) && ts(p.title) &&
          ts(p.xlegend) && ts(p.ylegend) &&
          r.ints(p.legend_position, p.legend_font, p.legend_style, p.legend_size) && ts(p.xscale) && ts(p.yscale)))
        return void(message = "Error reading graphic 2D preferences values");
    auto cs = [&r](CURVE_STYLE_TYPE& t) { return r.ints(t.colour, t.line_type, t.width, t.marker, t.size); };
    if (!(r.line() && cs(p.calc_curve) && cs(p.diff_curve) && r.ints(p.tick_colour, p.tick_width, p.tick_reserved) &&
          r.ints(p.prf_reserved1, p.prf_excluded_drawn, p.excluded_limit_range, p.prf_reserved2, p.hide_yscale)))
        return void(message = "Error reading PRF preferences values");
    auto& cc = p.contour_colours;
    if (!(r.line() && r.text(p.contour_title) && r.ints(cc[0], cc[1], cc[2], cc[3]) &&
          r.ints(p.contour_fill, p.contour_levels, p.contour_ncolours) &&
          p.contour_ncolours >= 0 && p.contour_ncolours <= 1000 && r.table(p.contour_table, p.contour_ncolours)))
        return void(message = "Error reading graphic 2D contour preferences values");
    if (!(r.line() && r.text(p.graph3d_title) && r.ints(p.graph3d_colour)))
        return void(message = "Error reading graphic 3D preferences values");
    auto& sc = p.surface_colours;
    if (!(r.line() && r.text(p.surface_title) && r.ints(sc[0], sc[1], sc[2], sc[3]) && r.ints(p.surface_shading)))
        return void(message = "Error reading graphic 3D Surface preferences values");
    if (!(r.line() && r.ints(p.qv_colours[0], p.qv_colours[1]) && r.ints(p.qv_flag) && r.ints(p.qv_colour3)))
        return void(message = "Error reading QuickView preferences values");
    p.single_title = hxl::Cut(p.single_title, 50);
    p.multi_title = hxl::Cut(p.multi_title, 50);
    out = p;
    error = false;
    message.clear();
}

std::string Preferences_Text(const PREFERENCES_TYPE& p, const std::string& product_line) {
    std::ostringstream o;
    auto ints = [&o](std::initializer_list<int> v) {
        for (int x : v) o << ' ' << x;
        o << '\n';
    };
    auto ts = [&](const TEXT_STYLE_TYPE& t) { ints({t.colour, t.position, t.font, t.style, t.size}); };
    auto cs = [&](const CURVE_STYLE_TYPE& t) { ints({t.colour, t.line_type, t.width, t.marker, t.size}); };
    o << "<<<<< Preferences setting file (do not edit and modify) >>>>>\n" << product_line << '\n';
    o << "<-- Main window Preferences -->\n";
    ints({p.win_width, p.win_height, p.title_bg, p.title_fg, p.first_flag});
    o << "<-- Environment Preferences -->\n";
    ints({p.always_save_context, p.internal_editor});
    for (const std::string* t : {&p.corvane_dir, &p.text_editor, &p.web_browser, &p.pdf_viewer, &p.cif_viewer,
                                 &p.ps_viewer, &p.compressor, &p.corvane_exe, &p.cmd_prefix})
        o << *t << '\n';
    o << "<-- Profile Data Preferences -->\n";
    for (int i = 1; i <= 12; ++i) {
        const PROFILE_STYLE_TYPE& s = p.style[static_cast<std::size_t>(i)];
        ints({s.line_colour, s.line_type, s.line_width, s.marker_colour, s.marker, s.marker_size, s.reserved});
    }
    o << "<-- Graph 2D Preferences -->\n" << hxl::Cut(p.single_title, 50) << '\n' << hxl::Cut(p.multi_title, 50) << '\n';
    ints({p.background, p.zone_colour, p.excluded_colour, p.excluded_drawn});
    ts(p.title), ts(p.xlegend), ts(p.ylegend);
    ints({p.legend_position, p.legend_font, p.legend_style, p.legend_size});
    ts(p.xscale), ts(p.yscale);
    o << "<-- Preferences Profile PRF-->\n";
    cs(p.calc_curve), cs(p.diff_curve);
    ints({p.tick_colour, p.tick_width, p.tick_reserved});
    ints({p.prf_reserved1, p.prf_excluded_drawn, p.excluded_limit_range, p.prf_reserved2, p.hide_yscale});
    o << "<-- Graph 2D Contour Preferences -->\n" << hxl::Cut(p.contour_title, 180) << '\n';
    ints({p.contour_colours[0], p.contour_colours[1], p.contour_colours[2], p.contour_colours[3]});
    ints({p.contour_fill, p.contour_levels, p.contour_ncolours});
    for (int i = 0; i < p.contour_ncolours; ++i)
        o << ' ' << (static_cast<std::size_t>(i) < p.contour_table.size() ? p.contour_table[static_cast<std::size_t>(i)] : 0);
    o << '\n';
    o << "<-- Graph 3D Preferences -->\n" << hxl::Cut(p.graph3d_title, 150) << '\n';
    ints({p.graph3d_colour});
    o << "<-- Graph 3D Surface Preferences -->\n" << hxl::Cut(p.surface_title, 150) << '\n';
    ints({p.surface_colours[0], p.surface_colours[1], p.surface_colours[2], p.surface_colours[3]});
    ints({p.surface_shading});
    o << "<-- QuickView PRF Preferences -->\n";
    ints({p.qv_colours[0], p.qv_colours[1]});
    ints({p.qv_flag});
    ints({p.qv_colour3});
    return o.str();
}

void Write_Preferences(const std::string& where, bool& error, std::string& message) {
    const CONFIGURATION_TYPE& c = Configuration();
    std::string file;
    if (c.os_tag == "WIND") {
        file = (hxl::Trim(where) == "local" ? c.start_dir : c.settings_dir) + c.dir_sep + c.setfile_name;
    } else {
        const std::string dir = IOsVariable("HOME") + c.dir_sep + ".zdp";
        if (!IOsIsDir(dir)) IOsDirMake(dir);
        file = dir + c.dir_sep + c.setfile_name;
    }
    error = !Write_File_Replace(file, Preferences_Text(Preferences(), c.product_name + " " + c.version_text));
    message = error ? "Unable to write setting file" : "";
}

}  // namespace zendrite

#pragma once
// Plot settings, helper program paths and the window size, kept in the preference file.
#include <array>
#include <string>
#include <vector>

namespace zendrite {

struct PROFILE_STYLE_TYPE {
    int line_colour = 0, line_type = 0, line_width = 1, marker_colour = 0, marker = 2, marker_size = 5,
        reserved = -1;
    bool operator==(const PROFILE_STYLE_TYPE&) const = default;
};
struct TEXT_STYLE_TYPE {
    int colour = 0, position = 3, font = 1, style = 1, size = 15;
    bool operator==(const TEXT_STYLE_TYPE&) const = default;
};
struct CURVE_STYLE_TYPE {
    int colour = 0, line_type = 0, width = 1, marker = 2, size = 5;
    bool operator==(const CURVE_STYLE_TYPE&) const = default;
};

struct PREFERENCES_TYPE {
    // main window
    int win_width = 800, win_height = 500, title_bg = 0, title_fg = 0, first_flag = 1;
    // environment
    int always_save_context = 0, internal_editor = 1;
    std::string corvane_dir, text_editor, web_browser, pdf_viewer, cif_viewer, ps_viewer, compressor,
        corvane_exe, cmd_prefix;
    // profile styles
    std::array<PROFILE_STYLE_TYPE, 13> style{};  // 1..12
    // graph 2D
    float page_width = 1200, page_height = 800;
    float zone_left = 0.15f, zone_bottom = 0.15f, zone_right = 0.85f, zone_top = 0.85f;
    std::string single_title, multi_title;
    int background = 0, zone_colour = 0, excluded_colour = 0, excluded_drawn = 1;
    TEXT_STYLE_TYPE title, xlegend, ylegend;
    int legend_position = 3, legend_font = 1, legend_style = 1, legend_size = 10;
    TEXT_STYLE_TYPE xscale, yscale;
    // Rietveld profile
    CURVE_STYLE_TYPE calc_curve, diff_curve;
    int tick_colour = 0, tick_width = 1, tick_reserved = 0;
    int prf_reserved1 = 0, prf_excluded_drawn = 1, excluded_limit_range = 0, prf_reserved2 = 0, hide_yscale = 1;
    // contour, 3D, surface, Quick View
    std::string contour_title;
    std::array<int, 4> contour_colours{};
    int contour_fill = 1, contour_levels = 20, contour_ncolours = 30;
    std::vector<int> contour_table;
    std::string graph3d_title;
    int graph3d_colour = 0;
    std::string surface_title;
    std::array<int, 4> surface_colours{};
    int surface_shading = 1;
    std::array<int, 2> qv_colours{};
    int qv_flag = 1;
    int qv_colour3 = 0;

    bool operator==(const PREFERENCES_TYPE&) const = default;
};

PREFERENCES_TYPE& Preferences();

void Set_Default_Preferences(PREFERENCES_TYPE& p);
void Set_Default_Preferences();
// Reads the file in the fixed order; on failure `error` is true with the section's message
// and `p` is left as it was.
void Read_Preferences(const std::string& file, PREFERENCES_TYPE& p, bool& error, std::string& message);
// The text of the file for `p`.
std::string Preferences_Text(const PREFERENCES_TYPE& p, const std::string& product_line);
// `where` "local" or empty; writes through a temporary file; creates ~/.zdp on Linux and Mac.
void Write_Preferences(const std::string& where, bool& error, std::string& message);

}  // namespace zendrite

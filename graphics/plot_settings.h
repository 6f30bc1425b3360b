#pragma once
// The settings of the 2D plot: page, zone, colours, the 12 profile styles,
// texts and fonts. The preferences fill them; these are the defaults.
#include <array>
#include <string>

namespace zendrite {

struct PROFILE_STYLE {
    int line_colour = 255;
    int line_type = 0;  // -1 none, 0 solid, others dashed kinds
    int line_width = 1;
    int marker_colour = 255;
    int marker = 2;  // 1 none, 2 circle, 3..8 custom
    int marker_size = 5;
    int reserved = -1;
};

struct CURVE_STYLE {
    int colour = 0;
    int line_type = 0;
    int line_width = 1;
    int marker = 2;
    int marker_size = 5;
};

struct TEXT_STYLE {
    int colour = 0;
    int position = 3;
    int font = 1;
    int style = 1;
    int size = 12;
};

inline constexpr int kStyleCount = 12;

struct PLOT_SETTINGS {
    int page_width = 1200, page_height = 800;
    float zone_left = 0.15f, zone_bottom = 0.15f, zone_right = 0.85f, zone_top = 0.85f;
    int background_colour = 0;
    int zone_colour = 0;
    std::array<PROFILE_STYLE, kStyleCount + 1> styles{};  // 1..12
    CURVE_STYLE calc_style, diff_style;
    int tick_colour = 0, tick_width = 1;
    bool tick_flag = true;  // reflections listed under the mouse
    bool excluded_drawn = true;
    int excluded_colour = 0;
    TEXT_STYLE title, x_legend, y_legend, x_scale, y_scale, legend;
    std::string title_text;                       // blank: the pattern's own title
    std::string multi_title = "Plot multi file";
    std::string x_legend_text, y_legend_text;     // set with the X space
    bool hide_y_scale = true;
    bool excluded_limit_range = false;
    std::string second_axis;  // "d-space", "q-space": a second X axis along the top; empty: none
    bool error_bars = false;  // sigma drawn as bars on every profile that has it, on request
};

PLOT_SETTINGS& Plot_Settings();
void Set_Default_Plot_Settings();
// The two plot styles: "Classic", the system's colours, page and zone; "Publication", a white
// page and zone, twelve colours that colour-blind readers tell apart, thin lines without markers.
void Set_Plot_Style(const std::string& style);
const std::string& Plot_Style();
// `text` of more than `most` characters as its start, an ellipsis and its end (UTF-8 safe).
std::string Shorten_Middle(const std::string& text, std::size_t most);
// The twelve colours of the Publication style, in the order the slots take them.
const std::array<int, 12>& Publication_Colours();

// Style number of a slot: 1..12 in turn.
int Style_Of_Slot(int slot);
// Colour of a Bragg tick from its reflection code (table of 20).
int Bragg_Tick_Colour(int refl_code);

// Position letters of the texts: "N" not drawn, "L", "C", "R".
std::string Title_Position_Letter(int code);
// Y legend: "--" not drawn, else top/centre/bottom and the orientation.
std::string Y_Legend_Position(int code);
// Page X of the legend column; negative when no legend is drawn.
float Legend_Page_X(int code, int page_width);

}  // namespace zendrite

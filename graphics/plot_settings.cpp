#include "graphics/plot_settings.h"

#include <vector>

#include "app/present.h"

namespace zendrite {

namespace {
constexpr std::array<int, 6> kStyleCycle = {255, 0xFF0000, 0x00FFFF, 0x00FF00, 0xFF00FF, 0xFFFF00};
constexpr std::array<int, 20> kTickColours = {0x00FF00, 0x0000FF, 0xFF0000, 0x00FFFF, 0xFF00FF,
                                              0xFFFF00, 0,        12092191, 12517376, 60138,
                                              4079359,  255,      612345,   22222,    4444444,
                                              5555,     111111,   33321,    667211,   88822};

PLOT_SETTINGS defaults() {
    PLOT_SETTINGS s;
    s.background_colour = WRGB(150, 200, 150);
    s.zone_colour = WRGB(235, 235, 235);
    for (int k = 1; k <= kStyleCount; ++k) {
        PROFILE_STYLE& st = s.styles[static_cast<std::size_t>(k)];
        st.line_colour = st.marker_colour = kStyleCycle[static_cast<std::size_t>((k - 1) % 6)];
    }
    s.calc_style = CURVE_STYLE{0, 0, 1, 2, 5};
    s.diff_style = CURVE_STYLE{WRGB(0, 0, 255), 0, 1, 2, 5};
    s.tick_colour = WRGB(0, 128, 0);
    s.tick_width = 1;
    s.excluded_drawn = true;
    s.excluded_colour = WRGB(192, 192, 192);
    s.title = TEXT_STYLE{WRGB(128, 0, 64), 3, 1, 1, 20};
    s.x_legend = TEXT_STYLE{WRGB(0, 64, 128), 3, 1, 1, 15};
    s.y_legend = TEXT_STYLE{WRGB(0, 64, 128), 7, 1, 1, 15};
    s.x_scale = TEXT_STYLE{0, 3, 1, 1, 12};
    s.y_scale = TEXT_STYLE{0, 3, 1, 1, 12};
    s.legend = TEXT_STYLE{0, 3, 1, 1, 10};
    return s;
}

std::string& style_name() {
    static std::string name = "Classic";
    return name;
}
}  // namespace

PLOT_SETTINGS& Plot_Settings() {
    static PLOT_SETTINGS settings = defaults();
    return settings;
}

void Set_Default_Plot_Settings() { Set_Plot_Style(Plot_Style()); }

const std::array<int, 12>& Publication_Colours() {
    // The Okabe-Ito set without its yellow (faint on white), then four of Tol's muted colours.
    static const std::array<int, 12> c = {
        WRGB(0, 114, 178),  WRGB(213, 94, 0),   WRGB(0, 158, 115),  WRGB(204, 121, 167),
        WRGB(86, 180, 233), WRGB(230, 159, 0),  WRGB(0, 0, 0),      WRGB(51, 34, 136),
        WRGB(136, 34, 85),  WRGB(68, 170, 153), WRGB(153, 153, 51), WRGB(119, 119, 119)};
    return c;
}

void Set_Plot_Style(const std::string& style) {
    // the axis and the error bars are choices of their own
    const std::string axis = Plot_Settings().second_axis;
    const bool bars = Plot_Settings().error_bars;
    PLOT_SETTINGS s = defaults();
    style_name() = style == "Publication" ? "Publication" : "Classic";
    if (style_name() == "Publication") {
        s.background_colour = s.zone_colour = WRGB(255, 255, 255);
        for (int k = 1; k <= kStyleCount; ++k) {
            PROFILE_STYLE& st = s.styles[static_cast<std::size_t>(k)];
            st.line_colour = st.marker_colour = Publication_Colours()[static_cast<std::size_t>(k - 1)];
            st.line_width = 1, st.line_type = 0;
            st.marker = 1;  // a line through the points: they are denser than the pixels in any real pattern
        }
        s.calc_style = CURVE_STYLE{WRGB(0, 0, 0), 0, 1, 1, 5};
        s.diff_style = CURVE_STYLE{WRGB(119, 119, 119), 0, 1, 1, 5};
        s.tick_colour = WRGB(0, 158, 115);
        s.excluded_colour = WRGB(220, 220, 220);
        s.title = TEXT_STYLE{WRGB(0, 0, 0), 3, 1, 1, 18};
        s.x_legend = TEXT_STYLE{WRGB(0, 0, 0), 3, 1, 1, 15};
        s.y_legend = TEXT_STYLE{WRGB(0, 0, 0), 7, 1, 1, 15};
    }
    s.second_axis = axis;
    s.error_bars = bars;
    Plot_Settings() = s;
}

const std::string& Plot_Style() { return style_name(); }

std::string Shorten_Middle(const std::string& text, std::size_t most) {
    // counted in characters: the bytes that begin one
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < text.size(); ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) starts.push_back(i);
    if (starts.size() <= most || most < 3) return text;
    const std::size_t head = (most - 1) / 2, tail = most - 1 - head;
    return text.substr(0, starts[head]) + "\u2026" + text.substr(starts[starts.size() - tail]);
}


int Style_Of_Slot(int slot) { return slot - kStyleCount * ((slot - 1) / kStyleCount); }

int Bragg_Tick_Colour(int refl_code) {
    const int m = refl_code % 20;
    const int entry = m < 2 ? 1 : m;
    return kTickColours[static_cast<std::size_t>(entry - 1)];
}

std::string Title_Position_Letter(int code) {
    static const std::string letters = " NLCR";
    if (code < 1 || code > 4) return "N";
    return std::string(1, letters[static_cast<std::size_t>(code)]);
}

std::string Y_Legend_Position(int code) {
    static const std::array<const char*, 10> codes = {"--", "TV", "TR", "T9", "CV", "CR", "C9", "BV", "BR", "B9"};
    if (code < 1 || code > 10) return "--";
    return codes[static_cast<std::size_t>(code - 1)];
}

float Legend_Page_X(int code, int page_width) {
    switch (code) {
    case 2: return 0.18f * static_cast<float>(page_width);
    case 3: return 0.7f * static_cast<float>(page_width);
    case 4: return 0.87f * static_cast<float>(page_width);
    default: return -1.0f;
    }
}

}  // namespace zendrite

#include "graphics/plot_settings.h"

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
}  // namespace

PLOT_SETTINGS& Plot_Settings() {
    static PLOT_SETTINGS settings = defaults();
    return settings;
}

void Set_Default_Plot_Settings() { Plot_Settings() = defaults(); }

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

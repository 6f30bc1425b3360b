#pragma once
// Helpers of the plot tests: an off-screen root window, a clean store, profiles
// made up or read from real files, and pixel probes in page units.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/plot.h"
#include "graphics/curve_draw.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "patterns/read_pattern.h"

namespace ptest {

using namespace zendrite;

inline std::vector<std::string>& Messages() {
    static std::vector<std::string> messages;
    return messages;
}

inline void Start_Window() {
    static bool started = false;
    if (started) return;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int argc = 1;
    static char name[] = "test_graphics";
    static char* argv[] = {name, nullptr};
    WInitialise(argc, argv, true);
    WindowOpen(0, 0, 1200, 830, "plot test");
    started = true;
}

// The frame of the plot zone in a picture the size of the window, with data units 0..xmax, 0..ymax.
inline void Frame_On_Window(float xmax, float ymax) {
    Start_Window();
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrPlotMode(PlotNormal);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1200, 800);
    IGrPaletteBackground(0xFFFFFF);
    IGrAreaClear();
    IPgArea(0.15f, 0.15f, 0.85f, 0.85f);
    IPgUnits(0, 0, xmax, ymax);
    Set_Frame_Pixels(0, xmax, 0, ymax, WInfoWindow(1), WInfoWindow(2));
}

// Every pixel of the window.
inline std::vector<int> Picture() {
    std::vector<int> out;
    const int w = WInfoWindow(1), h = WInfoWindow(2);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) out.push_back(IGrGetPixelRGB(x, y));
    return out;
}

inline void Fresh_Store() {
    Reset_Store();
    Enter_None_Mode();
    Set_Default_Plot_Settings();
    ZENDRITE_STORE& g = zendrite_param_global();
    g.Peak_List.count = 0;
    g.Bgr_List.count = 0;
    Mouse_State() = MOUSE_STATE{};
    Messages().clear();
    Graphics_Hooks() = GRAPHICS_HOOKS{};
    Graphics_Hooks().message = [](const std::string& text) { Messages().push_back(text); };
}

// A profile of n points with y = f(x), in the next slot.
template <class F>
int Add_Slot(int n, float x0, float x1, F f, const std::string& name = "made.dat", const std::string& type = "DATA") {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int k = ++g.nperfiles;
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    hxl::Allocate_Pattern(p, n);
    for (int i = 1; i <= n; ++i) {
        p.x(i) = x0 + (x1 - x0) * static_cast<float>(i - 1) / static_cast<float>(std::max(n - 1, 1));
        p.y(i) = f(p.x(i));
        p.sigma(i) = std::max(p.y(i), 1.0f);
    }
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.scat_var = "2theta";
    hxl::Pattern_Y_Limits(p);
    PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(k)];
    Clear_Prf_Info(info);
    info.prf_name = name;
    info.prf_type = type;
    return k;
}

// A real pattern file of tests/data/patterns in the next slot.
inline int Load_Real(const std::string& file) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int k = g.nperfiles + 1;
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    hxl::Read_Pattern(std::string(ZD_TEST_DATA) + "/patterns/" + file, p, std::string("FreeFormat"));
    if (hxl::ERR_Pattern) return 0;
    g.nperfiles = k;
    PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(k)];
    Clear_Prf_Info(info);
    info.prf_name = file;
    info.prf_type = "DATA";
    return k;
}

// Colour of the window picture at a page position.
inline int Pixel_At(float px, float py) {
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    const float w = static_cast<float>(WInfoWindow(1)), h = static_cast<float>(WInfoWindow(2));
    const int ix = static_cast<int>(px / 1200.0f * w), iy = static_cast<int>((1.0f - py / 800.0f) * h);
    return IGrGetPixelRGB(std::clamp(ix, 0, static_cast<int>(w) - 1), std::clamp(iy, 0, static_cast<int>(h) - 1));
}

inline bool Near(int a, int b, int tolerance = 40) {
    int ra = 0, ga = 0, ba = 0, rb = 0, gb = 0, bb = 0;
    WRGBsplit(a, ra, ga, ba);
    WRGBsplit(b, rb, gb, bb);
    return std::abs(ra - rb) + std::abs(ga - gb) + std::abs(ba - bb) <= tolerance;
}

// Number of pixels of a page rectangle near a colour.
inline int Count_Colour(float x1, float y1, float x2, float y2, int rgb, int tolerance = 40) {
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    const float w = static_cast<float>(WInfoWindow(1)), h = static_cast<float>(WInfoWindow(2));
    const int ix1 = static_cast<int>(std::min(x1, x2) / 1200.0f * w), ix2 = static_cast<int>(std::max(x1, x2) / 1200.0f * w);
    const int iy1 = static_cast<int>((1.0f - std::max(y1, y2) / 800.0f) * h);
    const int iy2 = static_cast<int>((1.0f - std::min(y1, y2) / 800.0f) * h);
    int count = 0;
    for (int iy = std::max(iy1, 0); iy <= std::min(iy2, static_cast<int>(h) - 1); ++iy)
        for (int ix = std::max(ix1, 0); ix <= std::min(ix2, static_cast<int>(w) - 1); ++ix)
            if (Near(IGrGetPixelRGB(ix, iy), rgb, tolerance)) ++count;
    return count;
}

inline WIN_MESSAGE Mouse(int type, int button, float px, float py) {
    WIN_MESSAGE m;
    m.type = type;
    m.value1 = button;
    m.gx = px;
    m.gy = py;
    return m;
}

// Page position of a data point of the last frame.
inline void Page_Of(float x, float y, float& px, float& py) { Data_To_Page(x, y, px, py); }

}  // namespace ptest

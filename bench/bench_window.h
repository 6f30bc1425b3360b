#pragma once
// The off-screen main window of the drawing benches: a picture of 1200 by 800
// pixels below the status bar, opened once per program.
#include <cmath>
#include <cstdlib>
#include <string>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"

namespace zendrite {

inline void Start_Bench_Window(const char* program) {
    static bool started = false;
    if (started) return;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int argc = 1;
    static char* argv[] = {const_cast<char*>(program), nullptr};
    WInitialise(argc, argv, true);
    WindowOpen(0, 0, 1200, 800, "bench");
    // the status bar takes part of the window: grow it until the picture is 1200 by 800
    WindowSelect(kRootWindow);
    const int missing = 800 - WInfoWindow(2);
    if (missing > 0) WindowOpen(0, 0, 1200, 800 + missing, "bench");
    started = true;
}

// The store filled with `profiles` 2theta patterns of `points` from 5 to 155 degrees, of
// intensities y(slot, point, x), named bench_<slot>.dat; limits as a reader sets them.
template <class INTENSITY>
void Fill_Bench_Store(int profiles, int points, float ymax, INTENSITY y) {
    ZENDRITE_STORE& g = zendrite_param_global();
    Reset_Store();
    for (int k = 1; k <= profiles; ++k) {
        DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
        p.npts = points;
        p.x.resize(points);
        p.y.resize(points);
        for (int i = 1; i <= points; ++i) {
            const float x = 5.0f + 150.0f * static_cast<float>(i - 1) / static_cast<float>(points - 1);
            p.x(i) = x;
            p.y(i) = y(k, i, x);
        }
        p.xmin = p.x(1);
        p.xmax = p.x(points);
        p.ymin = 100.0f;
        p.ymax = ymax;
        p.scat_var = "2theta";
        g.info[static_cast<std::size_t>(k)].prf_name = "bench_" + std::to_string(k) + ".dat";
        g.info[static_cast<std::size_t>(k)].prf_type = "DATA";
    }
    g.nperfiles = profiles;
}

// `profiles` made-up patterns of `points` points (peaks every 10 degrees over a ramp of
// noise), shown together in the multi mode and drawn once.
inline void Fill_Plot_Bench_Store(int profiles, int points) {
    Fill_Bench_Store(profiles, points, 2200.0f, [](int k, int i, float x) {
        return 100.0f + 10.0f * static_cast<float>(k % 50) + 900.0f * std::exp(-std::pow(std::fmod(x, 10.0f) - 5.0f, 2.0f) * 8.0f) +
               static_cast<float>((static_cast<long long>(i) * 7919) % 97);
    });
    Enter_Multi_Mode(false);
    Plot_ReMake();
}

}  // namespace zendrite

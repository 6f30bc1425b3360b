#pragma once
// The off-screen main window of the drawing benches: a picture of 1200 by 800
// pixels below the status bar, opened once per program.
#include <cstdlib>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"

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

}  // namespace zendrite

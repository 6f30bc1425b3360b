#pragma once
// The off-screen window of the verbs that draw (render, chart), opened once.
#include <cstdlib>

#include "app/present.h"

namespace zendrite {

inline void Start_Batch_Window(const char* title) {
    if (WOffscreen()) return;
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int argc = 1;
    static char name[] = "zendrite-batch";
    static char* argv[] = {name, nullptr};
    WInitialise(argc, argv, true);
    WSetUnattended(true);
    WindowOpen(0, 0, 1200, 800, title);
}

}  // namespace zendrite

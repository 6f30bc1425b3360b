#pragma once
// Small numors of a bank of tubes, in the layout of the 2D powder instruments:
// header I and F blocks, then per step an S block, an F block (time, monitor,
// total counts, angle x 1000) and an I block of counts, tube after tube.
#include <functional>
#include <string>
#include <vector>

#include "numor_builder.h"

namespace ztest {

struct Tube_Run {
    int tubes = 5, pixels = 5, steps = 3;
    bool sxtal_title = false;  // title in 60 columns and the scan type "omega" after it
    float first_angle = 20.0f, step = 0.25f, wavelength = 1.594f;
    std::function<int(int tube, int pixel, int step)> counts = [](int t, int p, int k) { return 1000 * k + 100 * t + p; };
    std::function<float(int step)> monitor = [](int) { return 1000.0f; };
};

inline std::string Tube_Numor(const Tube_Run& r, int steps_written = -1, int cut_lines = 0) {
    Numor_Builder b;
    b.R(121459).A("D2B suard nass26-Jun-13 21:19:49");
    std::string title = "La0.75Ba0.25CoO2.92 test run";
    title.resize(r.sxtal_title ? 60 : 72, ' ');
    b.A_Lines({title + (r.sxtal_title ? "omega" : "2theta")});
    b.I(Values<int>(31, {{4, 1}, {5, 3}, {7, r.steps}, {24, r.tubes * r.pixels}}));
    b.F(Values<float>(50, {{18, r.wavelength}, {36, r.first_angle}, {37, r.step}}));
    int n = steps_written < 0 ? r.steps : steps_written;
    for (int k = 1; k <= n; ++k) {
        b.S(1, 24, 25, 121459, 0);
        float angle = r.first_angle + static_cast<float>(k - 1) * r.step;
        b.F({37000.0f, r.monitor(k), 0.0f, angle * 1000.0f, 538.0f, 50810.0f});
        std::vector<int> c;
        for (int t = 1; t <= r.tubes; ++t)
            for (int p = 1; p <= r.pixels; ++p) c.push_back(r.counts(t, p, k));
        b.I(c);
    }
    std::string text = b.Text();
    for (int i = 0; i < cut_lines; ++i) text.erase(text.rfind('\n', text.size() - 2) + 1);
    return text;
}

}  // namespace ztest

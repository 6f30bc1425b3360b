#pragma once
// Small numors of each powder instrument, built block by block.
#include <functional>
#include <string>
#include <vector>

#include "numor_builder.h"

namespace ztest {

struct Frame {
    int monitor;
    float time;   // seconds
    float angle;  // degrees
};

// KV7: header I block, F block, then every frame in one I block with a stride of 29.
inline std::string KV7_Numor(int numor, const std::vector<Frame>& frames, const std::function<int(int, int)>& count,
                             float wavelength = 2.52f, const std::string& name = "KV7", int declared_frames = -1) {
    if (declared_frames < 0) declared_frames = static_cast<int>(frames.size());
    std::vector<int> data;
    for (std::size_t j = 0; j < frames.size(); ++j) {
        data.push_back(frames[j].monitor);
        data.push_back(static_cast<int>(frames[j].time * 1000.0f + 0.5f));
        data.push_back(static_cast<int>(frames[j].angle * 1000.0f + (frames[j].angle >= 0 ? 0.5f : -0.5f)));
        data.push_back(0);
        for (int k = 1; k <= 25; ++k) data.push_back(count(k, static_cast<int>(j) + 1));
    }
    Numor_Builder b;
    b.R(numor)
        .A(name + " lambert   21-Nov-26 10:00:00")
        .A("Nickel powder at room temperature")
        .S()
        .I(Values<int>(31, {{4, 1}, {5, 2}, {7, declared_frames}, {24, 25}}), 3)
        .F(Values<float>(50, {{18, wavelength}, {46, 300.0f}, {47, 301.0f}, {48, 299.5f}, {49, 1.5f}, {50, 0.25f}}))
        .I(data);
    return b.Text();
}

// KV8, first layout: two F and two I blocks.
inline std::string KV8_Layout1(int numor, const std::vector<int>& counts, float start, float wavelength = 1.28f,
                               int monitor = 10000, float time = 60.0f) {
    Numor_Builder b;
    b.R(numor)
        .A("KV8 martin    01-Jan-99 12:00:00")
        .A("Silicon standard")
        .S()
        .I(Values<int>(31, {{4, 3}, {5, 1}, {9, 2}, {24, static_cast<int>(counts.size())}, {25, 11}, {31, 17}}))
        .F(Values<float>(50, {{7, start}, {18, wavelength}, {46, 10.0f}, {48, 12.0f}, {50, 0.5f}}))
        .F({time * 1000.0f, static_cast<float>(monitor), 12345.0f, start * 1000.0f})
        .I(counts);
    return b.Text();
}

// KV9: header blocks, then one S, F, I set per frame.
inline std::string KV9_Numor(int numor, int declared_frames, const std::vector<Frame>& frames, int n_pixels,
                             const std::function<int(int, int)>& count, const std::string& name = "KV9") {
    Numor_Builder b;
    b.R(numor)
        .A(name + " dupont    02-Feb-20 08:30:00")
        .A("Garnet, high resolution")
        .I(Values<int>(31, {{4, 1}, {5, 1}, {7, declared_frames}, {9, 4}, {24, n_pixels}, {25, 7}}))
        .F(Values<float>(50, {{18, 1.594f}, {36, 10.0f}, {37, 0.05f}, {38, 1.2f}, {46, 4.0f}, {48, 4.5f}}));
    for (std::size_t j = 0; j < frames.size(); ++j) {
        std::vector<int> c;
        for (int k = 1; k <= n_pixels; ++k) c.push_back(count(k, static_cast<int>(j) + 1));
        b.S(static_cast<int>(j) + 1)
            .F({frames[j].time * 1000.0f, static_cast<float>(frames[j].monitor), 0.0f, frames[j].angle * 1000.0f})
            .I(c);
    }
    return b.Text();
}

}  // namespace ztest

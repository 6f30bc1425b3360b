#include "instrument/frame_image.h"

#include <algorithm>
#include <cmath>

#include "support/fixed_text.h"

namespace hxl {

float Frame_Percentile(const FRAME_SET_TYPE& f, int k, float p) {
    std::size_t n = static_cast<std::size_t>(f.nx) * static_cast<std::size_t>(f.ny);
    if (n == 0) return 0;
    std::vector<float> v(Frame_Data(f, k), Frame_Data(f, k) + n);
    double q = std::clamp(static_cast<double>(p), 0.0, 100.0) / 100.0 * static_cast<double>(n - 1);
    auto at = v.begin() + static_cast<std::ptrdiff_t>(std::llround(q));
    std::nth_element(v.begin(), at, v.end());
    return *at;
}

float Scale_Position(float c, float lo, float hi, Frame_Scale scale) {
    if (!(hi > lo)) return c > lo ? 1.0f : 0.0f;
    double t = (std::clamp(c, lo, hi) - lo) / static_cast<double>(hi - lo);
    switch (scale) {
        case Frame_Scale::Log: t = std::log1p(t * 1000.0) / std::log1p(1000.0); break;  // three decades
        case Frame_Scale::Sqrt: t = std::sqrt(t); break;
        case Frame_Scale::Linear: break;
    }
    return static_cast<float>(t);
}

void Ramp_Colour(float t, std::uint8_t rgb[3]) {
    // Black, blue, magenta, orange, yellow, white: a dark ground with bright spots.
    static const float stops[6][3] = {{0, 0, 0}, {30, 30, 160}, {170, 40, 150}, {240, 120, 40}, {250, 220, 60},
                                      {255, 255, 255}};
    float s = std::clamp(t, 0.0f, 1.0f) * 5.0f;
    int i = std::min(4, static_cast<int>(s));
    float w = s - static_cast<float>(i);
    for (int c = 0; c < 3; ++c) rgb[c] = static_cast<std::uint8_t>(std::lround(stops[i][c] * (1 - w) + stops[i + 1][c] * w));
}

std::vector<std::uint8_t> Frame_RGB(const FRAME_SET_TYPE& f, int k, const FRAME_VIEW_TYPE& view, float& lo, float& hi) {
    lo = Frame_Percentile(f, k, view.low_percentile);
    hi = Frame_Percentile(f, k, view.high_percentile);
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(f.nx) * static_cast<std::size_t>(f.ny) * 3);
    const float* d = Frame_Data(f, k);
    for (std::size_t i = 0; i < rgb.size() / 3; ++i) Ramp_Colour(Scale_Position(d[i], lo, hi, view.scale), &rgb[i * 3]);
    return rgb;
}

bool Parse_Frame_Scale(const std::string& word, Frame_Scale& scale) {
    std::string w = Lower(Trim(word));
    if (w == "linear" || w == "lin") scale = Frame_Scale::Linear;
    else if (w == "log") scale = Frame_Scale::Log;
    else if (w == "sqrt") scale = Frame_Scale::Sqrt;
    else return false;
    return true;
}

}  // namespace hxl

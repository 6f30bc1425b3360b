#include "instrument/frame_contours.h"

#include <cmath>

namespace hxl {

std::vector<std::array<float, 4>> Iso_Segments(const FRAME_SET_TYPE& f, int k, float level, int i1, int i2, int j1, int j2) {
    std::vector<std::array<float, 4>> out;
    i1 = std::max(i1, 1), j1 = std::max(j1, 1), i2 = std::min(i2, f.nx), j2 = std::min(j2, f.ny);
    for (int j = j1; j < j2; ++j)
        for (int i = i1; i < i2; ++i) {
            // Corners counter-clockwise from (i, j); their values and positions.
            const float v[4] = {Frame_Value(f, k, i, j), Frame_Value(f, k, i + 1, j), Frame_Value(f, k, i + 1, j + 1),
                                Frame_Value(f, k, i, j + 1)};
            const float x[4] = {i - 0.5f, i + 0.5f, i + 0.5f, i - 0.5f}, y[4] = {j - 0.5f, j - 0.5f, j + 0.5f, j + 0.5f};
            float px[4], py[4];
            int n = 0;
            for (int e = 0; e < 4; ++e) {
                int a = e, b = (e + 1) % 4;
                if ((v[a] < level) == (v[b] < level)) continue;
                float t = (level - v[a]) / (v[b] - v[a]);
                px[n] = x[a] + t * (x[b] - x[a]);
                py[n] = y[a] + t * (y[b] - y[a]);
                ++n;
            }
            // Two crossings: one segment; four (a saddle): pair them by edge order.
            if (n >= 2) out.push_back({px[0], py[0], px[1], py[1]});
            if (n == 4) out.push_back({px[2], py[2], px[3], py[3]});
        }
    return out;
}

float Scale_Level(float t, float lo, float hi, Frame_Scale scale) {
    double u = t;
    if (scale == Frame_Scale::Sqrt) u = u * u;
    else if (scale == Frame_Scale::Log) u = std::expm1(u * std::log1p(1000.0)) / 1000.0;
    return static_cast<float>(lo + u * (hi - lo));
}

}  // namespace hxl
